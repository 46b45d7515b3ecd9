// SPDX-License-Identifier: MIT
// The work of the grid engine other than painting, compared with the toolkit's own views
// over the same rows in the same run: from taking over the data to the first frame, folding, copying, and the memory
// beyond the data's own columns. It prints ratios of processor time (elapsed time for copying), the least of several
// rounds. The optional argument is the number of lines, by default 1,000,000.
#include <malloc.h>

#include <QScrollBar>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <numeric>

#include "journal_window.h"
#include "rival_models.h"
#include "sheet/input/keyboard.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"

namespace {

using namespace stockbook;
using bench::SecondsOf;

constexpr int kCopiedLines = 100'000;

double Least(int rounds, const std::function<double()>& measure) {
  double least = std::numeric_limits<double>::infinity();
  for (int round = 0; round < rounds; ++round) least = std::min(least, measure());
  return least;
}

void Print(const char* what, double grid, const char* rival, double other, double most) {
  std::printf("%-34s %10.3f ms   %-44s %10.3f ms   ratio %.4f   (at most %.2f)\n", what, grid * 1e3, rival, other * 1e3,
              grid / other, most);
  std::fflush(stdout);
}

// A second copy of the loaded columns that the sheet shows.
std::vector<columns::Column> CopiesOf(const sheet::GridSheet& sheet, const std::vector<int>& columns) {
  std::vector<uint32_t> order(sheet.RecordCount());
  std::iota(order.begin(), order.end(), 0U);
  std::vector<columns::Column> copies;
  for (const int column : columns) {
    const columns::Column* loaded = sheet.LoadedText(column);
    copies.push_back(loaded != nullptr ? loaded->Gather(order)
                                       : columns::Column::Constant(base::Value(), order.size()));
  }
  return copies;
}

// A sheet with the same columns and appearance, but without data.
void Prepare(sheet::GridSheet& to, const sheet::GridSheet& from, const std::vector<int>& columns) {
  to.SetGridFont(from.GridFont());
  to.SetRowHeight(-1, from.RowHeight(from.Rows() - 2));
  to.SetCols(static_cast<int>(columns.size()) + 1);
  to.SetColWidth(0, 0);
  for (size_t at = 0; at < columns.size(); ++at) {
    const auto column = static_cast<int>(at) + 1;
    to.SetColWidth(column, from.ColWidth(columns[at]));
    to.SetColFormat(column, from.ColFormat(columns[at]));
    to.SetColDataType(column, from.ColDataType(columns[at]));
    to.SetColAlignment(column, from.ColAlignment(columns[at]));
    to.SetTextMatrix(0, column, from.TextMatrix(0, columns[at]));
  }
}

void FirstFrame(const sheet::GridSheet& journal, const bench::ShownTexts& texts) {
  const double grid = Least(5, [&] {
    sheet::GridSheet sheet;
    Prepare(sheet, journal, texts.columns());
    qt::SheetWidget view(sheet.view());
    bench::Show(view);
    std::vector<columns::Column> columns = CopiesOf(journal, texts.columns());
    return SecondsOf([&] {
      sheet.LoadColumns(std::move(columns), 1);
      view.viewport()->repaint();
    });
  });
  const double table = Least(5, [&] {
    bench::TableModel model(texts);
    QTableView view;
    bench::Match(view, journal, texts.columns());
    bench::Show(view);
    return SecondsOf([&] {
      view.setModel(&model);
      view.viewport()->repaint();
    });
  });
  Print("data handed over to first frame", grid, "QTableView setModel to first frame", table, 0.40);
}

// expandAll() is quadratic in the number of lines and takes minutes for all of them, so it gets a hundredth.
double ExpandAHundredth(const bench::ShownTexts& texts) {
  bench::TreeModel model(texts, bench::kPeriods, texts.rows() / 100);
  QTreeView tree;
  tree.setUniformRowHeights(true);
  tree.setModel(&model);
  bench::Show(tree);
  return SecondsOf([&] {
    tree.expandAll();
    tree.viewport()->repaint();
  });
}

void Folding(qt::StockbookWidget& widget, const bench::ShownTexts& texts) {
  sheet::GridSheet& sheet = widget.sheet();
  const auto fold = [&](bool collapsed) {
    return SecondsOf([&] {
      collapsed ? sheet.CollapseAll() : sheet.ExpandAll();
      widget.viewport()->repaint();
    });
  };
  double collapse = std::numeric_limits<double>::infinity();
  double expand = collapse;
  for (int round = 0; round < 10; ++round) {
    collapse = std::min(collapse, fold(true));
    expand = std::min(expand, fold(false));
  }
  const double hundredth = ExpandAHundredth(texts);
  bench::TreeModel model(texts, bench::kPeriods, texts.rows());
  QTreeView tree;
  tree.setUniformRowHeights(true);
  tree.setModel(&model);
  bench::Show(tree);
  // Group by group is the tree's fastest way.
  const double tree_expand = SecondsOf([&] {
    for (int group = 0; group < bench::kPeriods; ++group) tree.expand(model.index(group, 0, {}));
    tree.viewport()->repaint();
  });
  const double tree_collapse = SecondsOf([&] {
    tree.collapseAll();
    tree.viewport()->repaint();
  });
  Print("expand all, with the repaint", expand, "QTreeView expandAll, a hundredth of the rows", hundredth, 0.05);
  Print("expand all, with the repaint", expand, "QTreeView expand, group by group", tree_expand, 0.05);
  Print("collapse all, with the repaint", collapse, "QTreeView collapseAll", tree_collapse, 0.05);
  Print("both", expand + collapse, "both", tree_expand + tree_collapse, 0.05);
}

// The toolkit's side does less: it has the texts, but not joined, and not on the clipboard. Measured in elapsed time,
// because several processors share the work.
void Copying() {
  const std::unique_ptr<qt::StockbookWidget> widget = bench::LoadedWidget(kCopiedLines);
  bench::Show(*widget);
  sheet::GridSheet& sheet = widget->sheet();
  const bench::ShownTexts texts(sheet);
  sheet::Keyboard keyboard(sheet.view());
  const sheet::Modifiers control{sheet::Modifiers::kControl};
  const double grid = Least(9, [&] {
    return bench::ElapsedSecondsOf([&] {
      keyboard.Press({sheet::Key::kA, control});
      keyboard.Press({sheet::Key::kC, control});
    });
  });
  bench::TableModel model(texts);
  QTableView table;
  table.setModel(&model);
  bench::Show(table);
  const double toolkit = Least(3, [&] {
    qsizetype length = 0;
    const double seconds = bench::ElapsedSecondsOf([&] {
      table.selectAll();
      for (const QModelIndex& index : table.selectionModel()->selectedIndexes())
        length += index.data().toString().size();
    });
    if (length == 0) std::abort();
    return seconds;
  });
  Print("select all and copy 100,000 x 14", grid, "QTableView selectAll, selectedIndexes, data", toolkit, 0.20);
}

// Grouped, with total rows and a picture for each line, as a journal needs it.
void Memory(const sheet::GridSheet& journal, const bench::ShownTexts& texts) {
  // The shown columns, and the periods to group by.
  std::vector<int> which = texts.columns();
  which.push_back(journal.ColIndex("Period"));
  std::vector<columns::Column> columns = CopiesOf(journal, which);
  const size_t rows = columns.front().size();
  const auto in_use = [] {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
  };
  const double before = in_use();
  sheet::GridSheet sheet;
  Prepare(sheet, journal, which);
  sheet.LoadColumns(std::move(columns), 1);
  std::vector<uint8_t> codes(rows, 1);
  sheet.SetLoadedPictures(1, std::move(codes), {nullptr, journal.NodeOpenPicture()},
                          platform::PictureAlignment::kLeftCenter);
  sheet.GroupBy(sheet.Cols() - 1, 1, "%s");
  sheet.SelectRange(1, 1, sheet.Rows() - 1, 3);
  sheet.CollapseAll();
  const double bytes = (in_use() - before) / static_cast<double>(rows);
  std::printf("%-34s %10.3f bytes a row (at most 24)\n", "memory beyond the data's columns", bytes);
}

}  // namespace

int main(int argc, char** argv) {
  const int lines = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  const app::GuiSession session(app::GuiNeed::kPicture);
  const std::unique_ptr<qt::StockbookWidget> widget = bench::LoadedWidget(lines);
  bench::Show(*widget);
  const bench::ShownTexts texts(widget->sheet());
  FirstFrame(widget->sheet(), texts);
  Folding(*widget, texts);
  Copying();
  Memory(widget->sheet(), texts);
}
