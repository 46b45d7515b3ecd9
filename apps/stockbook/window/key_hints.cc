// SPDX-License-Identifier: MIT
#include "stockbook/window/key_hints.h"

#include <QKeySequence>

namespace stockbook::app {

void HintAtKeys(qt::StockbookWidget& stockbook) {
  const auto key = [](const QKeySequence& keys) { return keys.toString(QKeySequence::NativeText); };
  stockbook.SetMenuHints({{"mnuBill", key(Qt::CTRL | Qt::Key_B)},
                          {"mnuCopy", key(QKeySequence::Copy)},
                          {"mnuFind", key(QKeySequence::Find)},
                          {"mnuRefresh", key(Qt::Key_F5)},
                          {"mnuFrozen", key(Qt::CTRL | Qt::SHIFT | Qt::Key_F)},
                          {"mnuHiddenCol", key(Qt::CTRL | Qt::SHIFT | Qt::Key_H)},
                          {"mnuCollapse0", key(Qt::CTRL | Qt::SHIFT | Qt::Key_E)},
                          {"mnuCollapse1", key(Qt::CTRL | Qt::SHIFT | Qt::Key_L)}});
}

}  // namespace stockbook::app
