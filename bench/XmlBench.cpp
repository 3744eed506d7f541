// Parsing and writing of XML beside two other libraries: the same documents, kept as completely by
// all three (comments, CDATA sections, white space), in one run. Documents are bytes in memory.

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <utility>

#include "xml/XmlDocument.h"
#include "xml/XmlWriter.h"

namespace {

// The documents

/// What a host describes its dialogs with. The other libraries want a single root.
std::string dialogs() {
    std::ifstream file(DIALOGS_XML, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    text.insert(text.find("?>") + 2, "<root>");
    return text + "</root>";
}

/// Controls side by side until there are `size` bytes of them.
std::string wide(std::size_t size) {
    std::string text = "<dialog id=\"101\" autogen=\"yes\">\n";
    for (std::size_t id = 1000; text.size() < size; ++id) {
        text +=
            "    <control id=\"" + std::to_string(id) + "\">\n        <subclass>toggle</subclass>";
        text +=
            "<cue>Gr\xC3\xB6\xC3\x9F"
            "e &amp; Farbe</cue>\n        ";
        text += R"(<font name="Segoe UI" size="9" weight="400"/>)"
                "\n    </control>\n";
    }
    return text + "</dialog>";
}

/// Each element in the one before.
std::string deep(std::size_t size) {
    const std::string start = "<panel id=\"7\">text";
    const std::string end = "</panel>\n";
    const std::size_t depth = size / (start.size() + end.size());
    std::string text;
    for (std::size_t i = 0; i < depth; ++i)
        text += start;
    for (std::size_t i = 0; i < depth; ++i)
        text += end;
    return text;
}

// The libraries. Each offers: read, which gives a null pointer for what it refuses; write.

struct Own {
    static std::unique_ptr<QkDlg::XmlDocument> read(const std::string& text) {
        auto document = std::make_unique<QkDlg::XmlDocument>();
        return document->parseBytes(text) ? nullptr : std::move(document);
    }
    static std::size_t write(const QkDlg::XmlDocument& document) {
        return QkDlg::writeDocument(document).size();
    }
};

struct Pugi {
    static std::unique_ptr<pugi::xml_document> read(const std::string& text) {
        constexpr unsigned kKeepAll =
            pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_comments;
        auto document = std::make_unique<pugi::xml_document>();
        const bool read = document->load_buffer(text.data(), text.size(), kKeepAll);
        return read ? std::move(document) : nullptr;
    }
    static std::size_t write(const pugi::xml_document& document) {
        struct Receiver : pugi::xml_writer {
            std::string text;
            void write(const void* data, std::size_t size) override {
                text.append(static_cast<const char*>(data), size);
            }
        } receiver;
        document.save(receiver, "", pugi::format_raw, pugi::encoding_utf8);
        return receiver.text.size();
    }
};

struct LibXml2 {
    struct Free {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    };
    static std::unique_ptr<xmlDoc, Free> read(const std::string& text) {
        return std::unique_ptr<xmlDoc, Free>(xmlReadMemory(
            text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_HUGE));
    }
    static std::size_t write(xmlDoc& document) {
        xmlChar* text = nullptr;
        int size = 0;
        xmlDocDumpMemoryEnc(&document, &text, &size, "UTF-8");
        xmlFree(text);
        return static_cast<std::size_t>(size);
    }
};

template <typename Library>
void parse(benchmark::State& state, const std::string& text) {
    for ([[maybe_unused]] auto each : state) {
        const auto document = Library::read(text);
        if (!document)
            return state.SkipWithError("the document was refused");
        benchmark::DoNotOptimize(document.get());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

template <typename Library>
void write(benchmark::State& state, const std::string& text) {
    const auto document = Library::read(text);
    if (!document)
        return state.SkipWithError("the document was refused");
    std::size_t size = 0;
    for ([[maybe_unused]] auto each : state)
        benchmark::DoNotOptimize(size += Library::write(*document));
    state.SetBytesProcessed(static_cast<std::int64_t>(size));
}

template <typename Library>
void grow(benchmark::State& state) {
    const std::string text = wide(static_cast<std::size_t>(state.range(0)));
    parse<Library>(state, text);
    state.SetComplexityN(state.range(0));
}

template <typename Library>
void add(const std::string& library) {
    using benchmark::RegisterBenchmark;
    const auto both = [&](const std::string& name, const std::string& text) {
        RegisterBenchmark(("parse/" + name + "/" + library).c_str(), parse<Library>, text)
            ->Unit(benchmark::kMicrosecond);
        RegisterBenchmark(("write/" + name + "/" + library).c_str(), write<Library>, text)
            ->Unit(benchmark::kMicrosecond);
    };
    constexpr std::size_t kLarge = std::size_t{8} << 20;
    both("dialogs", dialogs());
    both("wide", wide(kLarge));
    both("deep", deep(kLarge));
    RegisterBenchmark(("grow/" + library).c_str(), grow<Library>)
        ->RangeMultiplier(8)
        ->Range(std::int64_t{1} << 10, std::int64_t{64} << 20)
        ->Complexity(benchmark::oN)
        ->Unit(benchmark::kMicrosecond);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    add<Own>("own");
    add<Pugi>("pugixml");
    add<LibXml2>("libxml2");
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
