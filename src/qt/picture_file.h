// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <optional>

#include "stockbook/platform/picture.h"

namespace stockbook::qt {

// A picture as the bytes of a PNG file, with its scale in the text chunk "Scale"; nothing for a picture of another
// toolkit. A picture that is redrawn for every size is written large enough for the sharpest screens.
std::optional<QByteArray> ToPng(const platform::Picture& picture);

// Reads such bytes back; nothing if they are not a picture.
platform::PictureRef FromPng(const QByteArray& bytes);

}  // namespace stockbook::qt
