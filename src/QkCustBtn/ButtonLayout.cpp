#include "QkCustBtn/ButtonLayout.h"

namespace QkDlg {

namespace {

/// Parts the client rectangle into room for the image and room for the caption.
void partRoom(const ButtonContent& content, ButtonLayout& layout) {
    const int gap = content.imageGap ? content.padding : 0;
    switch (content.side) {
        case ImageSide::Above:
            layout.image.bottom = layout.image.top + content.image.height + 2 * content.padding;
            layout.text.top = layout.image.bottom + 1;
            return;
        case ImageSide::Right:
            layout.image.left = layout.image.right - content.image.width - gap;
            layout.text.right = layout.image.left - 1;
            return;
        case ImageSide::Left:
            layout.image.right = content.image.width + gap;
            layout.text.left = layout.image.right + 1;
            return;
    }
}

int imageX(const ButtonContent& content, const Rect& room) {
    if (!content.hasCaption || content.side == ImageSide::Above)
        return room.left + (room.width() - content.image.width) / 2;
    if (content.side == ImageSide::Right)
        return room.left;
    return content.imageGap || room.left != 0 ? content.padding : 0;
}

int imageY(const ButtonContent& content, const Rect& room) {
    switch (content.alignment) {
        case ImageAlignment::Top: return content.client.top;
        case ImageAlignment::Bottom: return content.client.bottom - content.image.height;
        case ImageAlignment::Middle: break;
    }
    return (room.bottom - content.image.height - room.top) / 2;
}

}  // namespace

ButtonLayout layOutButton(const ButtonContent& content) {
    ButtonLayout layout{content.client, content.client};
    if (!content.hasImage) {
        layout.image = {};
        return layout;
    }
    if (content.hasCaption)
        partRoom(content, layout);
    else
        layout.text.left = layout.text.top = layout.text.right = 0;
    layout.imageX = imageX(content, layout.image);
    layout.imageY = imageY(content, layout.image);
    return layout;
}

}  // namespace QkDlg
