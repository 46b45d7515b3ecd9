// SPDX-License-Identifier: MIT
#include "stockbook/window/help_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "qt/sheet/text.h"
#include "stockbook/command/program_version.h"
#include "stockbook/window/screen_fit.h"

namespace stockbook::app {
namespace {

constexpr QSize kHelpSize(560, 520);

struct KeyHelp {
  const char* keys;
  const char* text;
};

// What the grid itself does with keys and the mouse.
constexpr std::array<KeyHelp, 12> kGridKeys{{
    {"↑ ↓ ← →", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "移到相邻的单元格；加 Shift 选择")},
    {"Home  End", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "本行第一列、最后一列")},
    {"Ctrl+Home  Ctrl+End", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "台账的开头、结尾")},
    {"Page Up  Page Down", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "上一屏、下一屏")},
    {"Ctrl+A", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "全选")},
    {"Shift+Space  Ctrl+Space", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "选择整行、整列")},
    {"-  +", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "折叠、展开当前会计期")},
    {"Ctrl+-  Ctrl++", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "折叠、展开全部会计期")},
    {"Enter", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "在单据上：查看单据")},
    {"Shift+F10  Ctrl+Menu", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "单元格、列标题的快捷菜单")},
    {"Ctrl+滚轮  Shift+滚轮", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "缩放、横向滚动")},
    {"Esc", QT_TRANSLATE_NOOP("stockbook::app::HelpDialog", "取消拖动；在选择框中恢复原来的选择")},
}};

}  // namespace

HelpDialog::HelpDialog(const WindowMenus& menus, QWidget* parent) : QDialog(parent), keys_(new QTreeWidget) {
  setWindowTitle(tr("快捷键与版本"));
  keys_->setHeaderLabels({tr("按键"), tr("作用")});
  keys_->setRootIsDecorated(false);
  keys_->setAccessibleName(tr("快捷键"));
  keys_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  FillKeys(menus);
  auto* signs =
      new QLabel(tr("合计行有两行数字：上面是本期合计，下面是累计。\n数量右上角的圆点：这一行记录了库存来源。\n####："
                    "列太窄，放不下数字；浅色的####：列的一部分在窗口外，横向滚动可见。"));
  signs->setTextFormat(Qt::PlainText);
  signs->setWordWrap(true);
  auto* version = new QLabel(tr("库存台账 %1 版").arg(qt::ToQString(ProgramVersion())));
  version->setTextFormat(Qt::PlainText);
  version->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  auto* buttons = new QDialogButtonBox;
  connect(buttons->addButton(tr("关闭(&C)"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
          &QDialog::reject);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(keys_, 1);
  rows->addWidget(signs);
  rows->addWidget(version);
  rows->addWidget(buttons);
  ResizeWithinScreen(*this, kHelpSize);
}

void HelpDialog::FillKeys(const WindowMenus& menus) {
  for (const QAction* action : menus.ActionsWithKeys()) {
    // A menu's text has a mnemonic in brackets and dots where a dialog follows.
    QString text = action->text().section(QStringLiteral("(&"), 0, 0);
    text.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
    new QTreeWidgetItem(keys_, {action->shortcut().toString(QKeySequence::NativeText), text});
  }
  for (const KeyHelp& key : kGridKeys) new QTreeWidgetItem(keys_, {QString::fromUtf8(key.keys), tr(key.text)});
}

}  // namespace stockbook::app
