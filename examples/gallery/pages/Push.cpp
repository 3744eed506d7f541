#include "Ids.h"
#include "Page.h"

namespace Gallery {

std::span<const FlatControl> pushControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_PUSH_NORMAL, QK_PUSH_BUTTON},         {IDC_PUSH_MNEMONIC, QK_PUSH_BUTTON},
        {IDC_PUSH_DEFAULT, QK_PUSH_BUTTON},        {IDC_PUSH_DISABLED, QK_PUSH_BUTTON},
        {IDC_PUSH_BLUE, QK_BLUE_BUTTON},           {IDC_PUSH_BLUE_MNEMONIC, QK_BLUE_BUTTON},
        {IDC_PUSH_BLUE_MULTILINE, QK_BLUE_BUTTON}, {IDC_PUSH_BLUE_DISABLED, QK_BLUE_BUTTON},
        {IDC_PUSH_BLUE_LEFT, QK_BLUE_BUTTON},      {IDC_PUSH_BLUE_RIGHT, QK_BLUE_BUTTON},
        {IDC_PUSH_LEFT, QK_PUSH_BUTTON},           {IDC_PUSH_CENTRE, QK_PUSH_BUTTON},
        {IDC_PUSH_RIGHT, QK_PUSH_BUTTON},          {IDC_PUSH_MULTILINE, QK_PUSH_BUTTON},
        {IDC_PUSH_LONG, QK_PUSH_BUTTON},           {IDC_PUSH_EMPTY, QK_PUSH_BUTTON},
        {IDC_PUSH_SMALL, QK_PUSH_BUTTON},
    };
    return kControls;
}

}  // namespace Gallery
