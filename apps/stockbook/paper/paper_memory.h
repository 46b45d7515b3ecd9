// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include "stockbook/paper/journal_paper.h"

namespace stockbook::app {

// Keeps how journals stand on paper in settings, in a group of its own; what was never kept, or makes no sense, is as
// usual. Both do nothing without settings.
PaperChoice RememberedPaper(QSettings* settings);
void RememberPaper(QSettings* settings, const PaperChoice& choice);

// The sizes of paper that can be chosen, in the order in which they are offered.
inline constexpr QPageSize::PageSizeId kPaperSizes[] = {QPageSize::A4, QPageSize::A3, QPageSize::A5, QPageSize::B5,
                                                        QPageSize::Letter};

}  // namespace stockbook::app
