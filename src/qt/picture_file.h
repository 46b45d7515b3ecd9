// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <optional>

#include "platform/picture.h"

namespace stockbook::qt {

// A picture as the bytes of a PNG file, with its scale as the text "Scale" in it; nothing for a picture that another
// toolkit made. One that is drawn anew for every size is written large enough for the sharpest screens.
std::optional<QByteArray> ToPng(const platform::Picture& picture);

// Back from such bytes; nothing when they are no picture.
platform::PictureRef FromPng(const QByteArray& bytes);

}  // namespace stockbook::qt
