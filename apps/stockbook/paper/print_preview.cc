// SPDX-License-Identifier: MIT
#include "stockbook/paper/print_preview.h"

#include <QAction>
#include <QKeyEvent>
#include <QKeySequence>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "stockbook/control/stockbook.h"
#include "stockbook/paper/page_setup_dialog.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

constexpr double kPreviewUnitsPerPoint = 96.0 / 72.0;
constexpr double kZoomStep = 1.25;
constexpr double kSmallestScale = 0.2;
constexpr double kLargestScale = 4;
constexpr int kFrame = 30;  // around the paper in its area
constexpr QSize kWantedSize(1000, 760);

// Adds an action that its key does as well, whatever has the focus in the window.
template <typename Call>
QAction* AddTool(QToolBar& tools, const QString& text, const QKeySequence& key, Call call) {
  QAction* action = tools.addAction(text);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WindowShortcut);
  // The action's own tooltip is the text without the sign of its key.
  if (!key.isEmpty())
    action->setToolTip(action->toolTip() + QStringLiteral("　") + key.toString(QKeySequence::NativeText));
  QObject::connect(action, &QAction::triggered, &tools, call);
  return action;
}

}  // namespace

PrintPreview::PrintPreview(qt::StockbookWidget& journal, JournalHeading heading, const PaperChoice& choice,
                           QWidget* parent)
    : QDialog(parent),
      journal_(journal),
      heading_(std::move(heading)),
      choice_(choice),
      area_(new QScrollArea),
      view_(new PageView),
      number_(new QSpinBox),
      count_(new QLabel) {
  setWindowTitle(tr("打印预览"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  area_->setWidget(view_);
  area_->setAlignment(Qt::AlignCenter);
  area_->setBackgroundRole(QPalette::Dark);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->setMenuBar(BuildTools());
  rows->addWidget(area_, 1);
  const QSize room = screen() == nullptr ? kWantedSize : screen()->availableSize() * 9 / 10;
  resize(kWantedSize.boundedTo(room));
  LayOut();
  // Not the field of the page's number, which would keep some of the keys to itself.
  area_->setFocus();
  // A host may load again all the same.
  connect(&journal_, &qt::StockbookWidget::AfterLoaded, this, &PrintPreview::LayOut);
}

QToolBar* PrintPreview::BuildTools() {
  auto* tools = new QToolBar(this);
  AddTool(*tools, tr("打印(&P)..."), QKeySequence::Print, [this] { emit PrintWanted(); });
  AddTool(*tools, tr("存为 PDF(&S)..."), QKeySequence::Save, [this] { emit SaveWanted(); });
  AddTool(*tools, tr("页面设置(&U)..."), QKeySequence(Qt::CTRL | Qt::Key_U), [this] { AskForPage(); });
  tools->addSeparator();
  BuildPageTools(*tools);
  tools->addSeparator();
  BuildScaleTools(*tools);
  tools->addSeparator();
  AddTool(*tools, tr("关闭(&C)"), {}, [this] { close(); });
  return tools;
}

void PrintPreview::BuildPageTools(QToolBar& tools) {
  AddTool(tools, tr("首页"), QKeySequence(Qt::CTRL | Qt::Key_Home), [this] { GoTo(0); });
  AddTool(tools, tr("上一页"), QKeySequence(Qt::Key_PageUp), [this] { GoTo(page() - 1); });
  number_->setMinimum(1);
  number_->setKeyboardTracking(false);
  number_->setAccessibleName(tr("页码"));
  number_->installEventFilter(this);
  connect(number_, &QSpinBox::valueChanged, this, &PrintPreview::ShowPage);
  tools.addWidget(number_);
  tools.addWidget(count_);
  auto* go = new QAction(tr("转到页"), this);
  go->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
  connect(go, &QAction::triggered, number_, [this] {
    number_->setFocus();
    number_->selectAll();
  });
  addAction(go);
  AddTool(tools, tr("下一页"), QKeySequence(Qt::Key_PageDown), [this] { GoTo(page() + 1); });
  AddTool(tools, tr("末页"), QKeySequence(Qt::CTRL | Qt::Key_End), [this] { GoTo(PageCount() - 1); });
}

// The field has meanings of its own for some keys of the preview, such as Ctrl+U and Page Down, but what it can edit is
// one short number.
bool PrintPreview::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const QKeySequence key(static_cast<QKeyEvent*>(event)->keyCombination());
    for (const QAction* action : findChildren<QAction*>()) {
      if (action->shortcuts().contains(key)) {
        event->ignore();
        return true;
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

void PrintPreview::BuildScaleTools(QToolBar& tools) {
  AddTool(tools, tr("整页"), QKeySequence(Qt::CTRL | Qt::Key_0), [this] { FitTo(Fit::kPage); });
  AddTool(tools, tr("页宽"), QKeySequence(Qt::CTRL | Qt::Key_1), [this] { FitTo(Fit::kWidth); });
  AddTool(tools, tr("放大"), QKeySequence::ZoomIn, [this] { ZoomBy(kZoomStep); });
  AddTool(tools, tr("缩小"), QKeySequence::ZoomOut, [this] { ZoomBy(1 / kZoomStep); });
}

// The pages break where those of a PDF do, which counts in points.
void PrintPreview::LayOut() {
  const QRectF points = choice_.page.paintRect(QPageLayout::Point);
  const QRectF area(points.topLeft() * kPreviewUnitsPerPoint, points.size() * kPreviewUnitsPerPoint);
  view_->SetPrinter(nullptr, choice_.page);
  printer_ = std::make_unique<qt::GridPrinter>(journal_.sheet(), qt::Paper{area, 96}, WordsFor(heading_),
                                               SetupFor(journal_.sheet(), choice_));
  number_->setMaximum(PageCount());
  count_->setText(tr("／ %1 页").arg(PageCount()));
  view_->SetPrinter(printer_.get(), choice_.page);
  ApplyFit();
  ShowPage();
}

void PrintPreview::GoTo(int page) { number_->setValue(std::clamp(page, 0, PageCount() - 1) + 1); }

void PrintPreview::ShowPage() {
  // The row that the mouse or the keys are on has colours of its own, which are not for paper.
  const auto aside = journal_.control().SetHotRowAside();
  view_->SetPage(page());
  // The area has the keys, and every call is announced.
  const QString name = tr("第 %1 页，共 %2 页").arg(page() + 1).arg(PageCount());
  if (area_->accessibleName() != name) area_->setAccessibleName(name);
  view_->MakePicture();
}

void PrintPreview::SetChoice(const PaperChoice& choice) {
  choice_ = choice;
  LayOut();
  emit ChoiceChanged(choice_);
}

void PrintPreview::AskForPage() {
  auto* dialog = new PageSetupDialog(choice_, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this, [this, dialog] { SetChoice(dialog->Choice()); });
  dialog->open();
}

void PrintPreview::FitTo(Fit fit) {
  fit_ = fit;
  ApplyFit();
  ShowPage();
}

void PrintPreview::ZoomBy(double factor) {
  fit_ = Fit::kNone;
  view_->SetScale(std::clamp(view_->scale() * factor, kSmallestScale, kLargestScale));
  ShowPage();
}

void PrintPreview::ApplyFit() {
  if (fit_ == Fit::kNone) return;
  const QSizeF paper = view_->PaperSize();
  const QSizeF room = area_->maximumViewportSize() - QSize(kFrame, kFrame);
  const double across = room.width() / std::max(paper.width(), 1.0);
  const double down = room.height() / std::max(paper.height(), 1.0);
  view_->SetScale(std::clamp(fit_ == Fit::kWidth ? across : std::min(across, down), kSmallestScale, kLargestScale));
}

void PrintPreview::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  ApplyFit();
  ShowPage();
}

void PrintPreview::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  ApplyFit();
  ShowPage();
}

}  // namespace stockbook::app
