#include "lib/Text.h"

#include <gtest/gtest.h>

#include "DlgFont/FontKey.h"

namespace {

using namespace std::string_view_literals;

TEST(Text, ByteOrderMarkChoosesTheEncoding) {
    const std::wstring expected = L"<a\u00E4/>";
    EXPECT_EQ(QkLib::wideFromTextBytes("<a\xC3\xA4/>"sv), expected);
    EXPECT_EQ(QkLib::wideFromTextBytes("\xEF\xBB\xBF<a\xC3\xA4/>"sv), expected);
    EXPECT_EQ(QkLib::wideFromTextBytes("\xFF\xFE<\0a\0\xE4\0/\0>\0"sv), expected);
    EXPECT_EQ(QkLib::wideFromTextBytes("\xFE\xFF\0<\0a\0\xE4\0/\0>"sv), expected);
    EXPECT_EQ(QkLib::wideFromTextBytes(""sv), L"");
}

TEST(Text, WhatIsNoTextIsRefused) {
    EXPECT_FALSE(QkLib::wideFromUtf8("\xC3"sv)) << "cut in the middle of a character";
    EXPECT_FALSE(QkLib::wideFromUtf8("\xE4 Latin"sv));
    EXPECT_FALSE(QkLib::wideFromTextBytes("\xFF\xFE<"sv)) << "half a UTF-16 unit";
    EXPECT_FALSE(QkLib::wideFromTextBytes("\xFE\xFF\xDC\x00"sv)) << "half a surrogate pair";
}

using QkDlg::FontSubstitutions;

std::wstring substituted(const FontSubstitutions& table, const std::wstring& face, int size) {
    return table.apply({face, size, 700, 1}).key();
}

TEST(FontSubstitutions, AnySizeKeepsTheSizeAndExactSizeGoesFirst) {
    FontSubstitutions table;
    EXPECT_EQ(substituted(table, L"Tahoma", 8), L"Tahoma/8/700/1") << "an empty table";
    table.add(L"Tahoma", L"Segoe UI");
    EXPECT_EQ(substituted(table, L"Tahoma", 8), L"Segoe UI/8/700/1");
    table.add(L"Tahoma", 8, L"Arial", 10);
    EXPECT_EQ(substituted(table, L"Tahoma", 8), L"Arial/10/700/1");
    EXPECT_EQ(substituted(table, L"tahoma", 8), L"Arial/10/700/1") << "faces ignore case";
    EXPECT_EQ(substituted(table, L"Tahoma", 9), L"Segoe UI/9/700/1");
    EXPECT_EQ(substituted(table, L"Verdana", 8), L"Verdana/8/700/1");
    table.add(L"Tahoma", 8, L"Verdana", 7);
    EXPECT_EQ(substituted(table, L"Tahoma", 8), L"Verdana/7/700/1") << "the later one stands";
}

}  // namespace
