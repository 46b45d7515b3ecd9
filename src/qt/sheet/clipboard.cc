// SPDX-License-Identifier: MIT
#include "stockbook/qt/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <utility>

#include "qt/sheet/text.h"

namespace stockbook::qt {
namespace {

// A text kept as UTF-8 and converted for the toolkit only when it is pasted: most copies never are, and converting a
// large selection takes longer than collecting it.
class Utf8Text : public QMimeData {
 public:
  explicit Utf8Text(std::string text) : text_(std::move(text)) {}

  QStringList formats() const override { return {QStringLiteral("text/plain")}; }
  bool hasFormat(const QString& format) const override { return format == QStringLiteral("text/plain"); }

 protected:
  QVariant retrieveData(const QString& format, QMetaType type) const override {
    if (!hasFormat(format)) return {};
    if (type.id() == QMetaType::QByteArray) return QByteArray(text_.data(), static_cast<qsizetype>(text_.size()));
    return ToQString(text_);
  }

 private:
  std::string text_;
};

}  // namespace

void QtClipboard::Clear() { QGuiApplication::clipboard()->clear(); }

void QtClipboard::SetText(std::string text) {
  QGuiApplication::clipboard()->setMimeData(new Utf8Text(std::move(text)));  // the clipboard owns it
}

}  // namespace stockbook::qt
