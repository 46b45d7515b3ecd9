// SPDX-License-Identifier: MIT
#include "stockbook/window/import_run.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QStringList>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>
#include <new>
#include <sstream>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

constexpr int kLookEveryMs = 50;
constexpr int kQuietMs = 400;  // a shorter import shows no progress

// Shared by the thread that imports and the one that shows how far it is.
class SharedProgress : public ImportObserver {
 public:
  bool GoesOn(int64_t lines) override {
    lines_ = lines;
    return !is_cancelled_;
  }
  int64_t lines() const { return lines_; }
  void Cancel() { is_cancelled_ = true; }

 private:
  std::atomic<int64_t> lines_ = 0;
  std::atomic<bool> is_cancelled_ = false;
};

ImportResult ImportNow(const std::string& path, const TableOptions& options, ImportPlan& plan,
                       ImportObserver& observer) {
  std::istringstream nothing;
  const auto table = OpenTable(path, nothing, options);
  plan.decimal = table->decimal();
  return ImportTable(*table, plan, observer);
}

// Keeps the window alive until the result is there.
void WaitWithProgress(QWidget* parent, std::future<ImportResult>& result, SharedProgress& shared) {
  QProgressDialog progress(QCoreApplication::translate("Import", "正在导入..."),
                           QCoreApplication::translate("Import", "取消(&C)"), 0, 0, parent);
  progress.setWindowTitle(QCoreApplication::translate("Import", "导入"));
  progress.setWindowModality(Qt::WindowModal);
  QTimer::singleShot(kQuietMs, &progress, &QWidget::show);
  progress.setAutoClose(false);
  progress.setAutoReset(false);
  QEventLoop loop;
  QTimer timer;
  QObject::connect(&progress, &QProgressDialog::canceled, &progress, [&] { shared.Cancel(); });
  QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
    if (result.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
      loop.quit();
      return;
    }
    progress.setLabelText(QCoreApplication::translate("Import", "已读 %L1 行").arg(shared.lines()));
  });
  timer.start(kLookEveryMs);
  loop.exec();
}

QString EndText(const ImportResult& result) {
  const ImportTally& tally = result.tally;
  if (!tally.is_whole) return QCoreApplication::translate("Import", "导入已取消，没有写入任何内容。");
  if (tally.imported == 0)
    return QCoreApplication::translate("Import",
                                       "没有一行可以导入，没有写入任何内容：请核对各列的含义、分隔符和编码。");
  if (tally.lost > 0) {
    return QCoreApplication::translate(
               "Import", "有引号没有配对，%L1 行无法读取，第一处在第 %L2 行，没有写入任何内容：请改正后再导入。")
        .arg(tally.lost)
        .arg(tally.first_lost);
  }
  const QString skipped =
      tally.skipped == 0
          ? QString()
          : QCoreApplication::translate("Import", "，跳过 %L1 行（%2）").arg(tally.skipped).arg(SkippedText(tally));
  return QCoreApplication::translate("Import",
                                     "已导入 %L1 行：出库 %L2 行，入库 %L3 行；单据 %L4 张，商品 %L5 种，期间 %L6 个")
             .arg(tally.imported)
             .arg(result.issues)
             .arg(result.receipts)
             .arg(result.bills)
             .arg(result.products)
             .arg(result.periods) +
         skipped + QStringLiteral("。");
}

}  // namespace

QString SentenceText(const ImportSentence& sentence) {
  // What the window speaks is known to what translates its texts alone.
  const char* const word = QT_TRANSLATE_NOOP("Import", "导入");
  const bool is_chinese = QCoreApplication::translate("Import", word) == QString::fromUtf8(word);
  return qt::ToQString(is_chinese ? sentence.chinese : sentence.english);
}

QString ImportErrorText(const std::exception& error) {
  if (const auto* table = dynamic_cast<const TableError*>(&error))
    return SentenceText({table->what(), table->chinese()});
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
    return QCoreApplication::translate("Import", "内存不足，没有写入任何内容：请关闭其他程序，或把表分成几份。");
  return QCoreApplication::translate("Import", "导入没有完成，没有写入任何内容：%1").arg(qt::ToQString(error.what()));
}

QString SkippedText(const ImportTally& tally) {
  QStringList reasons;
  for (size_t index = 0; index < kSkipReasonCount; ++index) {
    if (tally.reasons[index] == 0) continue;
    const QString reason = SentenceText(SkipReasonText(static_cast<SkipReason>(index)));
    reasons.append(QCoreApplication::translate("Import", "%1 %L2 行").arg(reason).arg(tally.reasons[index]));
  }
  return reasons.join(QStringLiteral("、"));
}

ImportEnd ImportBesideWindow(QWidget* parent, const std::string& path, const TableOptions& options, ImportPlan plan) {
  SharedProgress shared;
  auto result = std::async(std::launch::async, [&] { return ImportNow(path, options, plan, shared); });
  WaitWithProgress(parent, result, shared);
  ImportEnd end;
  try {
    end.result = result.get();
    end.message = EndText(end.result);
  } catch (const std::exception& error) {
    end.message = ImportErrorText(error);
  }
  return end;
}

}  // namespace stockbook::app
