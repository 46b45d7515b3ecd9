// SPDX-License-Identifier: MIT
#include "qt/sheet/tool_tip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>
#include <string>

#include "qt/application.h"

namespace stockbook::qt {
namespace {

class ToolTip : public WithApplication {
 protected:
  // The size that the toolkit gives the tip on the screen.
  static QSize Shown(const QString& text) {
    QToolTip::hideText();
    QToolTip::showText({0, 0}, text);
    QSize size;
    for (const QWidget* window : QApplication::topLevelWidgets())
      if (window->inherits("QTipLabel") && window->isVisible()) size = window->size();
    QToolTip::hideText();
    return size;
  }
  static std::string Read(const QString& tip) {
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText().toStdString();
  }
};

TEST_F(ToolTip, ShowsMarksAsTheyAre) {
  EXPECT_EQ(Read(PlainToolTip("a <b>bolt</b> & a  nut")), "a <b>bolt</b> & a  nut");
  EXPECT_EQ(Read(PlainToolTip("M8 < M10\n\"2\"")), "M8 < M10\n\"2\"");
  EXPECT_TRUE(PlainToolTip({}).isEmpty());
}

TEST_F(ToolTip, KeepsAShortTextOnOneLine) {
  const QSize one_line = Shown(PlainToolTip(QStringLiteral("销")));
  const QSize text = Shown(PlainToolTip(QStringLiteral("2025-01-02 销售单 XS202501-0006 随车送货")));
  ASSERT_FALSE(one_line.isEmpty());
  EXPECT_EQ(text.height(), one_line.height());
  EXPECT_GT(text.width(), one_line.width());
}

TEST_F(ToolTip, BreaksALongTextIntoLines) {
  const QSize one_line = Shown(PlainToolTip(QStringLiteral("销")));
  for (const QString& text :
       {QStringLiteral("随车送货").repeated(60), QStringLiteral("with the lorry ").repeated(60)}) {
    const QSize size = Shown(PlainToolTip(text));
    EXPECT_GT(size.height(), 2 * one_line.height());
    EXPECT_LT(size.width(), 800);
  }
}

}  // namespace
}  // namespace stockbook::qt
