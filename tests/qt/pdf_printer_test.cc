// SPDX-License-Identifier: MIT
#include "stockbook/qt/pdf_printer.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "qt/application.h"
#include "qt/sheet/pdf_file.h"
#include "qt/sheet/text.h"
#include "support/sample_ledger.h"

namespace stockbook::qt {
namespace {

// Reads a PDF as strictly as a reader of PDF would: by its table of objects.
class PdfReader {
 public:
  explicit PdfReader(const std::string& bytes) : bytes_(QByteArray::fromStdString(bytes)) {
    const qsizetype start = bytes_.lastIndexOf("startxref\n");
    const qsizetype table = bytes_.mid(start + 10, bytes_.indexOf('\n', start + 10) - start - 10).toLongLong();
    const QList<QByteArray> lines = bytes_.mid(table).split('\n');
    EXPECT_EQ(lines[0], "xref");
    const int count = lines[1].split(' ').at(1).toInt();
    for (int number = 1; number < count; ++number) {
      const QByteArray& line = lines[number + 2];
      if (!line.endsWith("n ")) continue;
      const qsizetype place = line.left(10).toLongLong();
      const QByteArray head = QByteArray::number(number) + " 0 obj\n";
      EXPECT_EQ(bytes_.mid(place, head.size()), head) << number;
      places_[number] = place + head.size();
    }
  }

  size_t objects() const { return places_.size(); }
  // Up to its end or its stream.
  QByteArray Object(int number) const {
    const qsizetype place = places_.at(number);
    const qsizetype end = bytes_.indexOf("\nendobj", place);
    const qsizetype stream = bytes_.indexOf("stream\n", place);
    return bytes_.mid(place, (stream > 0 && stream < end ? stream : end) - place);
  }
  QByteArray Stream(int number) const {
    const QByteArray entries = Object(number);
    const qsizetype begin = bytes_.indexOf("stream\n", places_.at(number)) + 7;
    const QByteArray packed = bytes_.mid(begin, Number(entries, "/Length "));
    // The length that the toolkit wants before the bytes is only a guess.
    return qUncompress(QByteArray("\0\1\0\0", 4) + packed);
  }
  // The number after a key.
  int Number(const QByteArray& object, const QByteArray& key) const {
    const qsizetype at = object.indexOf(key);
    EXPECT_GE(at, 0) << key.toStdString() << " is not in " << object.toStdString();
    qsizetype end = at + key.size();
    while (end < object.size() && object[end] >= '0' && object[end] <= '9') ++end;
    return object.mid(at + key.size(), end - at - key.size()).toInt();
  }
  QByteArray Trailer() const { return bytes_.mid(bytes_.lastIndexOf("trailer")); }
  QByteArray Catalog() const { return Object(Number(Trailer(), "/Root ")); }
  std::vector<int> Pages() const {
    std::vector<int> pages;
    const QByteArray tree = Object(Number(Catalog(), "/Pages "));
    QByteArray kids = tree.mid(tree.indexOf("/Kids [") + 7);
    kids.truncate(kids.indexOf(']'));
    const QList<QByteArray> words = kids.simplified().split(' ');
    for (qsizetype at = 0; at + 2 < words.size(); at += 3) pages.push_back(words[at].toInt());
    return pages;
  }
  QByteArray Commands(int page) const { return Stream(Number(Object(page), "/Contents ")); }
  // What a reader copies from the page: its texts, each followed by a bar.
  QString Text(int page) const {
    const QByteArray resources = Object(Number(Object(page), "/Resources "));
    std::map<QByteArray, std::map<int, QString>> fonts;
    QString text;
    QByteArray font;
    static const QRegularExpression parts("(/F\\d+) [\\d.]+ Tf|<([0-9A-F]+)> Tj");
    for (auto found = parts.globalMatch(QString::fromLatin1(Commands(page))); found.hasNext();) {
      const QRegularExpressionMatch match = found.next();
      if (match.hasCaptured(1)) font = match.captured(1).toLatin1();
      if (!fonts.contains(font)) fonts[font] = Characters(Number(resources, font + " "));
      const QString glyphs = match.captured(2);
      for (qsizetype at = 0; at < glyphs.size(); at += 4) text += fonts[font][glyphs.mid(at, 4).toInt(nullptr, 16)];
      if (!glyphs.isEmpty()) text += '|';
    }
    return text;
  }
  // What the glyphs of a font stand for.
  std::map<int, QString> Characters(int font) const {
    std::map<int, QString> characters;
    static const QRegularExpression line("<([0-9a-f]{4})> <([0-9a-f]+)>");
    const QString table = QString::fromLatin1(Stream(Number(Object(font), "/ToUnicode ")));
    for (auto found = line.globalMatch(table); found.hasNext();) {
      const QRegularExpressionMatch match = found.next();
      QString text;
      for (qsizetype at = 0; at < match.captured(2).size(); at += 4)
        text += QChar(match.captured(2).mid(at, 4).toUShort(nullptr, 16));
      characters[match.captured(1).toInt(nullptr, 16)] = text;
    }
    return characters;
  }
  std::vector<QString> Bookmarks() const {
    std::vector<QString> titles;
    const QByteArray root = Object(Number(Catalog(), "/Outlines "));
    for (int entry = Number(root, "/First ");; entry = Number(Object(entry), "/Next ")) {
      const QByteArray object = Object(entry);
      QByteArray title = object.mid(object.indexOf("<FEFF") + 5);
      title.truncate(title.indexOf('>'));
      QString text;
      for (qsizetype at = 0; at < title.size(); at += 4) text += QChar(title.mid(at, 4).toUShort(nullptr, 16));
      titles.push_back(text);
      if (!object.contains("/Next ")) return titles;
    }
  }

 private:
  QByteArray bytes_;
  std::map<int, qsizetype> places_;
};

class PdfOfASheet : public WithApplication {
 protected:
  PdfOfASheet() { testing::SampleLedger({6, 40}).Fill(sheet_); }

  static PdfDocument Document() {
    PdfDocument document;
    document.page = QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(12, 12, 12, 12),
                                QPageLayout::Millimeter);
    document.title = "商品:六角螺栓";
    document.words.heading = "商品:六角螺栓";
    return document;
  }
  PdfReader Written(const PdfDocument& document) {
    std::ostringstream out;
    EXPECT_TRUE(WritePdf(sheet_, document, out));
    bytes_ = out.str();
    return PdfReader(bytes_);
  }

  sheet::GridSheet sheet_;
  std::string bytes_;
};

TEST_F(PdfOfASheet, HasThePagesOfThePrinter) {
  const PdfReader pdf = Written(Document());
  const QRectF area = Document().page.paintRect(QPageLayout::Point);
  const GridPrinter printer(sheet_, {area, 72}, "商品:六角螺栓");
  EXPECT_EQ(static_cast<int>(pdf.Pages().size()), printer.PageCount());
  EXPECT_GT(printer.PageCount(), 4);
  EXPECT_TRUE(pdf.Object(pdf.Pages()[0]).contains("/MediaBox [0 0 842 595]"));
}

TEST_F(PdfOfASheet, HasItsTextsAsTexts) {
  sheet_.SetColWidth(testing::kLedgerExplain, 3900);
  const PdfReader pdf = Written(Document());
  QString all;
  for (const int page : pdf.Pages()) {
    const QString text = pdf.Text(page);
    EXPECT_TRUE(text.startsWith("商品:六角螺栓|")) << text.left(40).toStdString();
    EXPECT_EQ(text.count("摘要|"), 1);
    all += text;
  }
  for (int row = 1; row < sheet_.Rows(); ++row) {
    if (sheet_.IsSubtotal(row)) continue;
    for (const int column : {testing::kLedgerBill, testing::kLedgerExplain, testing::kLedgerStoAcc}) {
      const QString text = ToQString(sheet_.DisplayText(row, column));
      ASSERT_TRUE(all.contains(text + "|")) << text.toStdString();
    }
  }
}

TEST_F(PdfOfASheet, TellsTheCharacterThatWasWrittenWhereOthersLookTheSame) {
  // Radicals share their glyphs with these in many faces.
  sheet_.SetTextMatrix(3, testing::kLedgerExplain, "金角入月");
  const PdfReader pdf = Written(Document());
  EXPECT_TRUE(pdf.Text(pdf.Pages()[0]).contains("金角入月|"));
}

TEST_F(PdfOfASheet, HasItsFontsInIt) {
  const PdfReader pdf = Written(Document());
  const QByteArray resources = pdf.Object(pdf.Number(pdf.Object(pdf.Pages()[0]), "/Resources "));
  const QByteArray font = pdf.Object(pdf.Number(resources, "/F0 "));
  const QByteArray part = pdf.Object(pdf.Number(font, "/DescendantFonts ["));
  const QByteArray descriptor = pdf.Object(pdf.Number(part, "/FontDescriptor "));
  EXPECT_TRUE(descriptor.contains("/FontFile")) << descriptor.toStdString();
  EXPECT_EQ(bytes_.find("/Type /Catalog", bytes_.find("/Type /Catalog") + 1), std::string::npos)
      << "nothing else of the toolkit's document";
}

TEST_F(PdfOfASheet, ListsThePeriodsAsItsContents) {
  const std::vector<QString> titles = Written(Document()).Bookmarks();
  ASSERT_EQ(titles.size(), 6U);
  EXPECT_EQ(titles.front(), "2004-01");
  EXPECT_EQ(titles.back(), "2004-06");
}

TEST_F(PdfOfASheet, CarriesTheStockOverThePages) {
  PdfDocument document = Document();
  document.setup.carried_columns = {testing::kLedgerStoQty};
  const PdfReader pdf = Written(document);
  EXPECT_FALSE(pdf.Text(pdf.Pages().front()).contains("承前页"));
  EXPECT_TRUE(pdf.Text(pdf.Pages().front()).contains("过次页|"));
  EXPECT_TRUE(pdf.Text(pdf.Pages().back()).contains("承前页|"));
}

TEST_F(PdfOfASheet, LaysTextsOutThatTheToolkitMustLayOut) {
  sheet_.SetTextMatrix(3, testing::kLedgerExplain, "e\xCC\x81 a");
  const PdfReader pdf = Written(Document());
  const QString text = pdf.Text(pdf.Pages()[0]);
  EXPECT_TRUE(text.contains("a|")) << text.toStdString();
}

TEST_F(PdfOfASheet, IsWrittenForAnEmptySheet) {
  sheet_.SetRows(1);
  const PdfReader pdf = Written(Document());
  ASSERT_EQ(pdf.Pages().size(), 1U);
  EXPECT_TRUE(pdf.Text(pdf.Pages()[0]).contains("摘要|"));
  EXPECT_FALSE(pdf.Catalog().contains("/Outlines"));
}

TEST_F(PdfOfASheet, TellsEachPageAndEndsWhereNoMoreIsWanted) {
  std::ostringstream out;
  std::vector<int> told;
  int all = 0;
  EXPECT_FALSE(WritePdf(sheet_, Document(), out, [&](int done, int count) {
    told.push_back(done);
    all = count;
    return done < 2;
  }));
  EXPECT_EQ(told, (std::vector<int>{1, 2}));
  EXPECT_GT(all, 4);
}

TEST_F(PdfOfASheet, IsOnA4UprightUnlessSaidOtherwise) {
  const PdfReader pdf = Written(PdfDocument());
  EXPECT_TRUE(pdf.Object(pdf.Pages()[0]).contains("/MediaBox [0 0 595 842]"))
      << pdf.Object(pdf.Pages()[0]).toStdString();
  EXPECT_EQ(PdfDocument().page.margins(QPageLayout::Millimeter), QMarginsF(15, 15, 15, 15));
}

TEST_F(PdfOfASheet, IsRefusedWhereThePageHasNoRoom) {
  std::ostringstream out;
  PdfDocument document = Document();
  document.page = QPageLayout();
  EXPECT_THROW(WritePdf(sheet_, document, out), std::invalid_argument);
  document.page =
      QPageLayout(QPageSize(QPageSize::A6), QPageLayout::Portrait, QMarginsF(60, 10, 60, 10), QPageLayout::Millimeter);
  EXPECT_THROW(WritePdf(sheet_, document, out), std::invalid_argument);
  EXPECT_EQ(out.str(), "") << "nothing is written";
}

TEST_F(PdfOfASheet, SaysThatAStreamTakesNoMore) {
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  int pages = 0;
  EXPECT_FALSE(WritePdf(sheet_, Document(), out, [&](int, int) { return ++pages > 0; }));
  EXPECT_EQ(pages, 0) << "it does not go on for nothing";
}

TEST(PdfNumbers, HaveNoExponentAndNoZerosBehind) {
  EXPECT_EQ(PdfNumber(0), "0");
  EXPECT_EQ(PdfNumber(841.89), "841.89");
  EXPECT_EQ(PdfNumber(-0.5), "-0.5");
  EXPECT_EQ(PdfNumber(1.00004), "1");
  EXPECT_EQ(PdfNumber(1200), "1200");
}

}  // namespace
}  // namespace stockbook::qt
