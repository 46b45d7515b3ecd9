// SPDX-License-Identifier: MIT
#include "stockbook/window/window_reading.h"

#include <QEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/inventory/inventory_tables.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/inventory_mark.h"

namespace stockbook::app {
namespace {

constexpr int kMostQuestions = 3;

}  // namespace

WindowReading::WindowReading(const Host& host)
    : QObject(&host.window),
      host_(host),
      loader_(host.stockbook),
      strip_(new LoadStrip(loader_.beside())),
      trail_(new BillTrail({host.stockbook, strip_->trail(), [this] { return host_.journal.options(); }, host.load,
                            [this] { return host_.journal.connection(); }},
                           &host.window)) {
  loader_.beside().SetCloseKeys(CloseKeys());
  host_.journal.SetLoader(
      [this](const JournalOptions& options, const std::function<void()>& arrange) { return Load(options, arrange); });
  connect(&host_.journal, &ShownJournal::Leaving, this, [this] { attempt_.reset(); });
  connect(&host_.journal, &ShownJournal::Arrived, this, &WindowReading::TellOutcome);
  connect(strip_, &LoadStrip::ReloadWanted, this, [this] {
    if (const auto& shown = host_.journal.options()) host_.load(JournalOptions(*shown));
  });
  connect(trail_, &BillTrail::Told, this, &WindowReading::Told);
  host_.menus.Add(MenuPlace::kGoRow, tr("查看单据(&D)..."), QKeySequence(Qt::CTRL | Qt::Key_B), trail_,
                  &BillTrail::Show);
  host_.menus.Add(MenuPlace::kGoBack, tr("返回单据(&Z)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B), trail_,
                  &BillTrail::GoBack);
  host_.window.installEventFilter(this);
}

// The user is asked here and not on the other thread: what opens gives up for want of a password, and begins again with
// the answer.
std::shared_ptr<platform::Connection> WindowReading::OpenBeside(DatabaseSource& source, const AskPassword& ask) {
  std::optional<std::string> answer;
  for (int questions = 0;; ++questions) {
    DatabaseSource tried = source;
    bool wants_answer = false;
    const AskPassword pass_on = [&](const std::string&) {
      wants_answer = !answer.has_value();
      return std::exchange(answer, std::nullopt);
    };
    try {
      std::shared_ptr<platform::Connection> opened;
      loader_.beside().Run({[&] { opened = OpenInventory(tried, SqlDialect::kDesktop, pass_on); }});
      // What opens cannot be stopped in the middle; what it gave is given up.
      if (loader_.beside().WasCancelled())
        throw platform::Error("open", qt::FromQString(tr("已取消打开。")), 0, platform::ErrorKind::kInterrupted);
      source = std::move(tried);
      return opened;
    } catch (const platform::Error&) {
      if (!wants_answer || !ask || questions >= kMostQuestions) throw;
      answer = ask(source.name());
      if (!answer) throw;
    }
  }
}

std::shared_ptr<PrefetchedConnection> WindowReading::Open(DatabaseSource& source, const AskPassword& ask) {
  std::string identity = IdentityOfFile(source.file());
  auto plain = OpenBeside(source, ask);
  platform::Connection& connection = *plain;
  auto opened = loader_.Prepare(std::move(plain));
  const QString name =
      source.file().empty() ? qt::ToQString(source.name()) : QFileInfo(qt::ToQString(source.file())).fileName();
  // All its statements in one turn of the other thread.
  loader_.beside().Run({[&] { RequireInventory(connection, qt::FromQString(name)); }, [&] { connection.Cancel(); },
                        [&] { return connection.RowsRead(); }});
  opening_ = std::move(identity);
  return opened;
}

void WindowReading::Use(const std::shared_ptr<PrefetchedConnection>& opened, const DatabaseSource& source,
                        const AskPassword& ask) {
  used_ = opened;
  source_ = source;
  ask_ = ask;
  identity_ = opening_;
  loader_.Use(opened);
  strip_->Follow(opened, source.file());
  trail_->Forget();
}

// A connection goes on reading the file that it has open, though its name is gone or that of another one.
void WindowReading::OpenAnewIfReplaced() {
  if (used_ == nullptr || source_.file().empty() || IdentityOfFile(source_.file()) == identity_) return;
  DatabaseSource source = source_;
  const auto fresh = Open(source, ask_);
  used_->Become(*fresh);
  source_ = std::move(source);
  identity_ = opening_;
  emit Replaced();
}

LoadReport WindowReading::Load(const JournalOptions& options, const std::function<void()>& arrange) {
  const auto task = loader_.beside().Begin();
  strip_->LoadBegins();
  LoadReport report;
  try {
    OpenAnewIfReplaced();
    report = loader_.Load(options, arrange);
  } catch (const platform::Error& error) {
    report.cancelled = loader_.beside().WasCancelled();
    report.notify.emplace_back(error.what());
  }
  if (!attempt_) attempt_.emplace(Attempt{options, report});
  return report;
}

void WindowReading::TellOutcome() {
  if (!attempt_) return;
  const Attempt attempt = *std::exchange(attempt_, std::nullopt);
  strip_->LoadEnded(attempt.report, [this, options = attempt.options] { host_.load(options); });
}

void WindowReading::TellThatItCannotBeOpened(const QString& path, const QString& reason) {
  auto* box = new QMessageBox(QMessageBox::Warning, tr("打不开数据库"),
                              tr("打不开“%1”。").arg(QFileInfo(path).fileName()), QMessageBox::NoButton, &host_.window);
  box->setTextFormat(Qt::PlainText);
  box->setInformativeText(reason);
  box->addButton(tr("关闭(&C)"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

bool WindowReading::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate && !host_.journal.IsLoading()) strip_->watch().LookNow();
  return QObject::eventFilter(watched, event);
}

}  // namespace stockbook::app
