#include "QkCustCombo/ComboLayout.h"

namespace QkDlg {

int arrowButtonWidth(int arrowWidth, int padding) {
    return arrowWidth + 2 * padding;
}

ArrowButton layOutArrowButton(const Size& client, int buttonWidth, const Size& arrow) {
    const int left = client.width - buttonWidth;
    return {{left, 0, client.width, client.height},
            left + (buttonWidth - arrow.width) / 2,
            (client.height - arrow.height) / 2};
}

Rect itemTextArea(const Size& client, const Rect& button) {
    return {0, 0, button.left - 1, client.height};
}

Rect listUnderItem(const Rect& item, int listHeight, const ListPlace& place) {
    const int top = item.bottom + place.gap;
    return {item.left - place.overhang, top, item.right + place.overhang, top + listHeight};
}

}  // namespace QkDlg
