#include <algorithm>
#include <map>

#include "DlgFont/FontKey.h"
#include "QkDlg/DialogFonts.h"
#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/OsVersion.h"

namespace QkDlg {

namespace {

constexpr int kPointsPerInch = 72;

struct CachedFont {
    FontDescription description;
    UniqueFont font;
};

/// What was asked for last, before substitution: most often the same is asked for again.
struct LastFont {
    std::wstring face;
    int size = 0;
    int weight = 0;
    int style = 0;
    HFONT font = nullptr;

    [[nodiscard]] bool answers(int askedSize, const std::wstring& askedFace, int askedWeight,
                               int askedStyle) const {
        return font && size == askedSize && weight == askedWeight && style == askedStyle &&
               face == askedFace;
    }
};

struct FontCache {
    std::map<std::wstring, CachedFont> fonts;
    LastFont last;
    FontSubstitutions substitutions;
    std::wstring defaultFace;
    int defaultSize = 0;
};

FontCache& filledCache() {
    static FontCache cache;
    if (!cache.defaultFace.empty())
        return cache;
    if (osVersion().atLeast60) {
        cache.defaultFace = L"Segoe UI";
        cache.defaultSize = 9;
        return cache;
    }
    LOGFONTW message{};
    cache.defaultSize = GetSystemMessageFont(message);
    cache.defaultFace = &message.lfFaceName[0];
    return cache;
}

UniqueFont makeFont(const FontDescription& wanted) {
    LOGFONTW log{};
    log.lfHeight = -MulDiv(wanted.size, screenDpiY(), kPointsPerInch);
    log.lfWeight = wanted.weight;
    log.lfItalic = wanted.italic() ? TRUE : FALSE;
    log.lfUnderline = wanted.underlined() ? TRUE : FALSE;
    const std::size_t room = LF_FACESIZE - 1;
    std::copy_n(wanted.face.begin(), std::min(room, wanted.face.size()), &log.lfFaceName[0]);
    return UniqueFont(CreateFontIndirectW(&log));
}

HFONT cachedFont(FontCache& cache, int size, const std::wstring& face, int weight, int style) {
    const FontDescription asked{face.empty() ? cache.defaultFace : face,
                                size == 0 ? cache.defaultSize : size, weight, style};
    const FontDescription wanted = cache.substitutions.apply(asked);
    const std::wstring key = wanted.key();
    if (const auto known = cache.fonts.find(key); known != cache.fonts.end())
        return known->second.font.get();
    UniqueFont font = makeFont(wanted);
    if (!font)
        return nullptr;
    return cache.fonts.emplace(key, CachedFont{wanted, std::move(font)}).first->second.font.get();
}

}  // namespace

HFONT GetFont(int size, const std::wstring& face, int weight, int style) {
    FontCache& cache = filledCache();
    if (cache.last.answers(size, face, weight, style))
        return cache.last.font;
    const HFONT font = cachedFont(cache, size, face, weight, style);
    cache.last = {face, size, weight, style, font};
    return font;
}

void AddFontSubstitution(const std::wstring& face, const std::wstring& substFace) {
    filledCache().last = {};
    filledCache().substitutions.add(face, substFace);
}

void AddFontSubstitution(const std::wstring& face, int size, const std::wstring& substFace,
                         int substSize) {
    filledCache().last = {};
    filledCache().substitutions.add(face, size, substFace, substSize);
}

int GetDefaultFont(std::wstring& faceOut) {
    const FontCache& cache = filledCache();
    faceOut = cache.defaultFace;
    return cache.defaultSize;
}

int GetSystemMessageFont(LOGFONTW& logfontOut) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    logfontOut = metrics.lfMessageFont;
    logfontOut.lfHeight = std::max(logfontOut.lfHeight, -logfontOut.lfHeight);
    const int dpi = screenDpiY();
    return dpi > 0 ? MulDiv(static_cast<int>(logfontOut.lfHeight), kPointsPerInch, dpi) : 0;
}

}  // namespace QkDlg
