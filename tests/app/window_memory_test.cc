// SPDX-License-Identifier: MIT
// What the window remembers between runs.
#include "stockbook/window/window_memory.h"

#include <gtest/gtest.h>

#include <QDockWidget>
#include <QFile>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <string>

#include "app/run_fixture.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Remembering : public RunTest {
 protected:
  int At(const char* key) { return grid().ColIndex(key); }
  QMenu* Recent() {
    for (QMenu* menu : window_->findChildren<QMenu*>()) {
      if (menu->title() == QStringLiteral("最近打开(&R)")) return menu;
    }
    return nullptr;
  }
};

TEST_F(Remembering, OpensTheInventoryAsItWasLeft) {
  Start();
  JournalOptions options;
  options.journal_type = 2;
  options.dp_id = 3;
  options.allow_qty2 = true;
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  grid().SetColWidth(At(keys::kExplain), 3333);
  grid().SetColHidden(At(keys::kBillKind), true);
  grid().SetColPosition(At(keys::kPrice), 1);
  grid().SetOutlineCol(At(keys::kBillNo));  // as the control does when the user has moved a column
  grid().SetFrozenCols(At(keys::kBillNo));
  const int closed = grid().NextSubtotal(grid().FixedRows());
  grid().SetIsCollapsed(closed, true);
  Settle();
  End();

  Start();
  EXPECT_EQ(window_->bar().Options().journal_type, 2);
  EXPECT_EQ(window_->bar().Options().dp_id, 3);
  EXPECT_TRUE(window_->bar().Options().allow_qty2);
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
  EXPECT_TRUE(grid().ColHidden(At(keys::kBillKind)));
  EXPECT_EQ(At(keys::kPrice), 1);
  EXPECT_EQ(grid().OutlineCol(), At(keys::kBillNo)) << "the tree moves along";
  EXPECT_EQ(grid().FrozenCols(), At(keys::kBillNo));
  EXPECT_TRUE(grid().IsCollapsed(closed));
  EXPECT_FALSE(grid().IsCollapsed(grid().NextSubtotal(closed + 1)));
}

TEST_F(Remembering, PutsTheWindowWhereItWasAndAtFirstOntoTheScreen) {
  Start();
  const QSize screen = window_->screen()->availableSize();
  EXPECT_LE(window_->width(), screen.width());
  EXPECT_LE(window_->height(), screen.height());
  const QSize mine(std::min(700, screen.width() - 50), std::min(500, screen.height() - 50));
  window_->resize(mine);
  Settle();
  End();
  Start();
  EXPECT_EQ(window_->size(), mine);
}

TEST_F(Remembering, KeepsTheColumnsOfEachJournalTypeApart) {
  Start();
  grid().SetColWidth(At(keys::kExplain), 3333);
  JournalOptions supplier;
  supplier.journal_type = 1;
  supplier.dp_id = 1;
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333);
  grid().SetColWidth(At(keys::kExplain), 2222);
  End();
  Start();
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 2222);
  JournalOptions product;
  product.key_id = 1;
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
}

TEST_F(Remembering, KeepsTheColumnsOfEachInventoryApart) {
  Start();
  grid().SetColWidth(At(keys::kExplain), 3333);
  QFile::copy(QString::fromStdString(PathOf("sample.db")), QString::fromStdString(PathOf("other.db")));
  window_->OpenFile(QString::fromStdString(PathOf("other.db")));
  EXPECT_TRUE(Title().ends_with("— other.db")) << Title();
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333);
  window_->OpenFile(QString::fromStdString(PathOf("sample.db")));
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
}

TEST_F(Remembering, KeepsWidthsThatWereFittedOfEachInventoryAndJournalType) {
  const auto widths = [this] {
    std::map<std::string, int> shown;
    for (int column = grid().FixedCols(); column < grid().Cols(); ++column) {
      if (!grid().ColHidden(column)) shown.emplace(grid().ColKey(column), grid().ColWidth(column));
    }
    return shown;
  };
  JournalOptions product;
  product.key_id = 1;
  JournalOptions supplier;
  supplier.journal_type = 1;
  supplier.dp_id = 1;
  QFile::copy(QString::fromStdString(PathOf("sample.db")), QString::fromStdString(PathOf("other.db")));
  Start();
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  const auto laid_out_supplier = widths();
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  const auto laid_out = widths();
  for (QAction* item : window_->findChildren<QAction*>()) {
    if (item->text() == QStringLiteral("列宽适应内容(&W)")) item->trigger();
  }
  const auto fitted = widths();
  ASSERT_NE(fitted, laid_out);
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  EXPECT_EQ(widths(), laid_out_supplier) << "another type of journals";
  window_->OpenFile(QString::fromStdString(PathOf("other.db")));
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  EXPECT_EQ(widths(), laid_out) << "another inventory";
  End();

  Start();
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  EXPECT_EQ(widths(), fitted) << "nobody has to fit them again";
  product.key_id = 2;
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  EXPECT_EQ(widths(), fitted) << "nor for another product";
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  EXPECT_EQ(widths(), laid_out_supplier);
}

TEST_F(Remembering, KeepsTheRangeOfEachJournalType) {
  const JournalRange march = JournalRange::Of({RangeBound::OfPeriod({2025, 3}), RangeBound::OfPeriod({2025, 3})});
  JournalRange days;
  days.from = RangeBound::OfDay(45700);
  Start();
  window_->views().ShowRange(march);
  JournalOptions supplier;
  supplier.journal_type = 1;
  supplier.dp_id = 1;
  supplier.range = days;
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  JournalOptions customer;
  customer.journal_type = 2;
  customer.dp_id = 3;
  ASSERT_TRUE(window_->LoadJournal(customer).loaded);
  EXPECT_TRUE(window_->views().range().IsAll()) << "this one has none";
  supplier.range = {};
  End();

  Start();
  EXPECT_TRUE(window_->views().range().IsAll()) << "of the customer, who was last";
  ASSERT_TRUE(window_->LoadJournal(supplier).loaded);
  EXPECT_EQ(window_->views().range(), days);
  JournalOptions product;
  product.key_id = 2;
  ASSERT_TRUE(window_->LoadJournal(product).loaded);
  EXPECT_EQ(window_->views().range(), march);
  EXPECT_TRUE(window_->views().range_bar().isVisible()) << "nobody takes it for the whole";
  window_->views().ShowRange({});
  End();

  Start();
  EXPECT_TRUE(window_->views().range().IsAll()) << "all of it was shown last";
  End();
}

TEST_F(Remembering, ARangeThatIsAskedForGoesBeforeTheLastOne) {
  const JournalRange march = JournalRange::Of({RangeBound::OfPeriod({2025, 3}), RangeBound::OfPeriod({2025, 3})});
  const JournalRange may = JournalRange::Of({RangeBound::OfPeriod({2025, 5}), RangeBound::OfPeriod({2025, 5})});
  Start();
  window_->views().ShowRange(march);
  End();
  Begin();
  Open();
  JournalOptions options;
  options.key_id = 1;
  options.range = may;
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  EXPECT_EQ(window_->views().range(), may);
  End();
}

TEST_F(Remembering, ForgetsTheRangeWhenAsked) {
  Start();
  window_->views().ShowRange(JournalRange::Of({RangeBound::OfPeriod({2025, 3}), RangeBound::OfPeriod({2025, 3})}));
  window_->recall()->Forget();
  EXPECT_TRUE(window_->views().range().IsAll());
  End();
  Start();
  EXPECT_TRUE(window_->views().range().IsAll());
}

TEST_F(Remembering, NamesTheInventoriesThatWereOpenedLast) {
  Start();
  QFile::copy(QString::fromStdString(PathOf("sample.db")), QString::fromStdString(PathOf("other.db")));
  window_->OpenFile(QString::fromStdString(PathOf("other.db")));
  QMenu* recent = Recent();
  ASSERT_NE(recent, nullptr);
  ASSERT_EQ(recent->actions().size(), 2);
  EXPECT_TRUE(recent->actions()[0]->text().endsWith(QStringLiteral("other.db")));
  recent->actions()[1]->trigger();
  Settle();
  EXPECT_TRUE(Title().ends_with("— sample.db")) << Title();
  EXPECT_TRUE(Recent()->actions()[0]->text().endsWith(QStringLiteral("sample.db")));
  QFile::remove(QString::fromStdString(PathOf("other.db")));
  emit Recent()->aboutToShow();
  EXPECT_FALSE(Recent()->actions()[1]->isEnabled()) << "a file that has gone";
}

TEST_F(Remembering, ForgetsEverythingWhenAsked) {
  Start();
  grid().SetColWidth(At(keys::kExplain), 3333);
  window_->stockbook().SetZoom(2.0);
  WindowRecall* recall = window_->recall();
  ASSERT_NE(recall, nullptr);
  recall->Forget();
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333) << "the columns, too";
  EXPECT_EQ(window_->stockbook().Zoom(), 1.0);
  EXPECT_EQ(Recent()->actions().size(), 0);
  End();
  Start();
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333);
}

TEST_F(Remembering, WritesNothingIntoTheInventory) {
  QFile file(QString::fromStdString(PathOf("sample.db")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray before = file.readAll();
  file.close();
  Start();
  grid().SetColWidth(At(keys::kExplain), 3333);
  End();
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), before);
}

TEST_F(Remembering, KeepsNoPathOfAnInventoryInTheKeys) {
  QSettings settings(SettingsFile(), QSettings::IniFormat);
  WindowMemory memory(settings);
  memory.SetInventory("Provider=Postgres;Host=db.example.com");
  memory.SetLastSubject({});
  memory.SetColumns(1, {});
  for (const QString& key : settings.allKeys())
    EXPECT_FALSE(key.contains(QStringLiteral("example"))) << key.toStdString();
  EXPECT_TRUE(memory.LastSubject().has_value());
  EXPECT_FALSE(memory.Columns(2).has_value());
  memory.SetInventory("");
  EXPECT_FALSE(memory.LastSubject().has_value());
}

TEST_F(Remembering, ReadsNonsenseInTheSettingsAsNothing) {
  QSettings settings(SettingsFile(), QSettings::IniFormat);
  WindowMemory memory(settings);
  memory.SetInventory("a.db");
  settings.setValue(memory.InventoryGroup() + QStringLiteral("/subject"), QStringLiteral("nonsense"));
  settings.setValue(memory.InventoryGroup() + QStringLiteral("/journal0/columns"), 7);
  EXPECT_FALSE(memory.LastSubject().has_value());
  ASSERT_TRUE(memory.Columns(0).has_value());
  EXPECT_EQ(*memory.Columns(0), ColumnChanges());
}

// As a program that was killed while it wrote, another version, or a curious user leaves them.
TEST_F(Remembering, ShowsTheJournalWhateverTheSettingsHold) {
  Start();
  const int columns = grid().Cols();
  const QString group = window_->recall()->memory().InventoryGroup();
  const std::string key(grid().ColKey(3));
  End();
  const QVariant values[] = {QVariant(),
                             7,
                             -1,
                             std::numeric_limits<int>::max(),
                             std::numeric_limits<int>::min(),
                             QStringLiteral("nan"),
                             QStringLiteral("inf"),
                             QByteArray("\xff\x00\x01", 3),
                             QStringList{QStringLiteral("2025-13"), QStringLiteral("x")},
                             QVariantMap{{QString::fromStdString(key), std::numeric_limits<int>::max()}}};
  for (const QVariant& value : values) {
    {
      QSettings settings(SettingsFile(), QSettings::IniFormat);
      for (const char* name : {"window/geometry", "window/zoom", "window/recent", "paper/scaling", "paper/page"})
        settings.setValue(QLatin1String(name), value);
      for (const char* name : {"/journal0/closed", "/journal0/range"})
        settings.setValue(group + QLatin1String(name), value);
      settings.setValue(group + QStringLiteral("/subject"), QVariantMap{{QStringLiteral("type"), 0},
                                                                        {QStringLiteral("key"), value},
                                                                        {QStringLiteral("second"), value},
                                                                        {QStringLiteral("class"), value}});
      QStringList order;
      for (int copy = 0; copy < 3 * columns; ++copy) order.append(QString::fromStdString(key));
      settings.setValue(group + QStringLiteral("/journal0/columns"),
                        QVariantMap{{QStringLiteral("widths"), QVariantMap{{QString::fromStdString(key), value}}},
                                    {QStringLiteral("hidden"), QVariantMap{{QString::fromStdString(key), value}}},
                                    {QStringLiteral("order"), order},
                                    {QStringLiteral("frozen"), value}});
    }
    Start();
    EXPECT_EQ(grid().Cols(), columns);
    EXPECT_GT(grid().RecordCount(), 0U);
    EXPECT_GE(stockbook().Zoom(), 0.5);
    EXPECT_LE(stockbook().Zoom(), 3.0);
    EXPECT_GE(window_->width(), 100);
    EXPECT_FALSE(stockbook().grab().isNull());
    EXPECT_TRUE(window_->views().range().IsAll());
    for (int column = 0; column < columns; ++column) {
      EXPECT_GE(grid().ColWidth(column), 0);
      EXPECT_LE(grid().ColWidth(column), 1'000'000);
    }
    End();
  }
}

TEST_F(Remembering, GivesPanelsTheHeightThatTheUserGaveThem) {
  Start();
  QDockWidget& plot = window_->views().plot();
  plot.show();
  Settle();
  const int first = plot.height();
  constexpr double kLine = 2;  // pixels above the panel
  constexpr double kUp = 120;
  const auto press = [this](QEvent::Type type, const QPointF& at) {
    const Qt::MouseButtons down = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, window_->mapToGlobal(at), button, down, Qt::NoModifier);
    QApplication::sendEvent(window_.get(), &event);
    Settle();
  };
  const QPointF line(window_->width() / 2.0, plot.y() - kLine);
  press(QEvent::MouseButtonPress, line);
  press(QEvent::MouseMove, line - QPointF(0, kUp));
  press(QEvent::MouseButtonRelease, line - QPointF(0, kUp));
  const int wanted = plot.height();
  ASSERT_NEAR(wanted, first + kUp, 1);
  End();

  Start();
  window_->views().periods().show();
  Settle();
  EXPECT_NEAR(window_->views().periods().height(), wanted, 2);
}

}  // namespace
}  // namespace stockbook::app
