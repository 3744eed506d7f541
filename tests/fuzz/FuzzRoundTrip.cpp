// What was written from a tree gives the same tree when it is read.
#include <cstdint>

#include "fuzz/Tree.h"
#include "xml/XmlWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using QkDlgTest::require;
    using QkDlgTest::treeOf;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    QkDlg::XmlDocument document;
    if (document.parseBytes(bytes))
        return 0;
    const std::string written = QkDlg::writeDocument(document);
    QkDlg::XmlDocument again;
    require(!again.parseBytes(written), "what was written can be read");
    require(treeOf(document, size, true) == treeOf(again, written.size(), true),
            "it is the same tree");
    require(QkDlg::writeDocument(again) == written, "written again it is the same text");
    return 0;
}
