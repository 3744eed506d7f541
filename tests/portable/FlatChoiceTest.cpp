#include "QkXFlatDlg/FlatChoice.h"

#include <gtest/gtest.h>

#include <vector>

namespace QkDlg {
namespace {

ControlDescription ofKind(const wchar_t* kind) {
    ControlDescription description;
    description.kind = kind;
    return description;
}

struct Row {
    const wchar_t* className;
    std::uint32_t style;
    const wchar_t* kind;  ///< null: not described
    FlatKind expected;
    StandardReason reason = StandardReason::IsFlat;
};

// One of each that becomes flat is in DialogTest; these are near them.
TEST(FlatChoice, FollowsClassStyleAndKind) {
    using enum FlatKind;
    using enum StandardReason;
    const std::vector<Row> rows{
        {L"EDIT", 0x50010020, nullptr, Password},
        {L"Edit", 0x50010000, L"toggle", Edit},
        {L"RichEdit20W", 0x20, nullptr, Edit},
        {L"MSFTEDIT_CLASS", 0, nullptr, Edit},
        {L"msftedi", 0, nullptr, None, UnknownClass},
        {L"Edit2", 0, nullptr, None, UnknownClass},
        {L"STATIC", 0, L"HSCROLL", DescribedText},
        {L"static", 0, L"hscroll", HorizontalScrollbar},
        {L"msctls_trackbar32", 0, L"hslider", ProgressBar},
        {L"Button", 0x50010001, L"", PushButton},
        {L"Button", 1, L"blue", AccentButton},
        {L"Button", 0, L"drop", None, UnknownKind},
        {L"Button", 3, L"toggle", Toggle},
        {L"Button", 2, L"blue", Checkbox},
        {L"Button", 4, nullptr, Radio},
        {L"Button", 9, nullptr, Radio},
        {L"Button", 0xD, L"drop", DropButton},
        {L"Button", 7, nullptr, None, UnknownType},
        {L"Button", 0xB, nullptr, None, UnknownType},
        {L"ComboBox", 0x50210000, nullptr, None, UnknownType},
        {L"", 0, nullptr, None, UnknownClass},
    };
    for (const Row& row : rows) {
        const ControlDescription described = ofKind(row.kind ? row.kind : L"");
        const FlatChoice choice =
            chooseFlatControl(row.className, row.style, row.kind ? &described : nullptr);
        EXPECT_EQ(choice, (FlatChoice{row.expected, row.reason})) << &row - rows.data();
    }
}

TEST(FlatChoice, AccentNumberMakesAPushButtonBlueWhateverItsKind) {
    ControlDescription described = ofKind(L"drop");
    described.colour = parseColour(L" 1799872\r\n");
    EXPECT_EQ(chooseFlatControl(L"Button", 0, &described).kind, FlatKind::AccentButton);
}

TEST(FlatChoice, ColoursAreDecimalOrHexadecimal) {
    EXPECT_EQ(parseColour(L"0x1B76c0"), 0x1B76C0U);
    EXPECT_EQ(parseColour(L"0XFFFFFFFF"), 0xFFFFFFFFU);
    EXPECT_EQ(parseColour(L"255"), 255U);
    for (const wchar_t* none :
         {L"", L" ", L"red", L"0x", L"1B", L"-1", L"4294967296", L"0x100000000", L"1 2"})
        EXPECT_EQ(parseColour(none), 0U);
}

}  // namespace
}  // namespace QkDlg
