#include "support/ImportPatch.h"

#include <gtest/gtest.h>

#include "common/ImportTable.h"

namespace QkDlgTest {

ImportPatch::ImportPatch(const char* function, void* replacement, HMODULE module)
    : slot_(QkDlgTools::importSlot(module ? module : GetModuleHandleW(nullptr), function)) {
    if (slot_)
        original_ = QkDlgTools::exchangeImport(slot_, replacement);
    else
        ADD_FAILURE() << "the module does not import " << function;
}

ImportPatch::~ImportPatch() {
    if (slot_)
        QkDlgTools::exchangeImport(slot_, original_);
}

}  // namespace QkDlgTest
