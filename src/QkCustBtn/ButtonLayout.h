#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

enum class ImageSide { Left, Right, Above };
enum class ImageAlignment { Top, Middle, Bottom };

/// What a button's content is laid out by; lengths in pixels.
struct ButtonContent {
    Rect client;
    Size image;  ///< empty when there is no image
    bool hasImage = false;
    bool hasCaption = true;
    ImageSide side = ImageSide::Left;
    ImageAlignment alignment = ImageAlignment::Middle;
    bool imageGap = true;  ///< keep the padding between image, caption and edge
    int padding = 0;
};

/// Where the content goes.
struct ButtonLayout {
    Rect text;   ///< room for the caption, margins included
    Rect image;  ///< room for the image
    int imageX = 0;
    int imageY = 0;

    /// The image itself, drawn at its size.
    [[nodiscard]] Rect imagePlace(const Size& size) const {
        return {imageX, imageY, imageX + size.width, imageY + size.height};
    }

    bool operator==(const ButtonLayout&) const = default;
};

[[nodiscard]] ButtonLayout layOutButton(const ButtonContent& content);

}  // namespace QkDlg
