// SPDX-License-Identifier: MIT
#include "end_to_end/shown_journal.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace stockbook::end_to_end {
namespace {

std::string TextOf(const QJsonValue& value) {
  EXPECT_TRUE(value.isString());
  return value.toString().toStdString();
}

void ExpectMembers(const QJsonObject& object, const QStringList& names) {
  QStringList sorted = names;
  sorted.sort();
  QStringList keys = object.keys();
  keys.sort();
  EXPECT_EQ(keys.join(QLatin1Char(' ')).toStdString(), sorted.join(QLatin1Char(' ')).toStdString());
}

QJsonObject ObjectOf(std::string_view line) {
  QJsonParseError error;
  const QJsonDocument document =
      QJsonDocument::fromJson(QByteArray(line.data(), static_cast<qsizetype>(line.size())), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString() << ": " << line.substr(0, 300);
  EXPECT_TRUE(document.isObject()) << line.substr(0, 300);
  return document.object();
}

void ReadHead(const QJsonObject& head, ShownJournal& journal) {
  ExpectMembers(head, {"caption", "columns", "notify", "process"});
  journal.caption = TextOf(head["caption"]);
  for (const auto& value : head["columns"].toArray()) {
    const QJsonObject column = value.toObject();
    ExpectMembers(column, {"key", "caption", "hidden", "type", "format", "width"});
    EXPECT_TRUE(column["hidden"].isBool());
    journal.columns.push_back({TextOf(column["key"]), TextOf(column["caption"]), column["hidden"].toBool(),
                               column["type"].toInt(-1), TextOf(column["format"]), column["width"].toInt(-1)});
  }
  for (const auto& message : head["notify"].toArray()) journal.notify.push_back(TextOf(message));
  for (const auto& value : head["process"].toArray()) journal.process.push_back(value.toInt(-99));
}

// Empty cells are omitted from both objects.
void ReadCells(const QJsonObject& from, Cells& cells) {
  for (auto cell = from.begin(); cell != from.end(); ++cell) {
    cells[PlaceOf(cell.key().toStdString())] = TextOf(cell.value());
    EXPECT_NE(TextOf(cell.value()), "") << cell.key().toStdString();
  }
}

ShownRow ReadRow(const QJsonObject& object, int expected_row) {
  ExpectMembers(object, {"row", "node", "level", "hidden", "height", "text", "display"});
  EXPECT_EQ(object["row"].toInt(-1), expected_row);
  EXPECT_TRUE(object["node"].isBool() && object["hidden"].isBool());
  ShownRow row{object["node"].toBool(),
               object["level"].toInt(-1),
               object["hidden"].toBool(),
               object["height"].toInt(-1),
               {},
               {}};
  ReadCells(object["text"].toObject(), row.text);
  ReadCells(object["display"].toObject(), row.display);
  return row;
}

}  // namespace

ShownJournal FromGrid(const sheet::GridSheet& grid) {
  ShownJournal journal;
  EXPECT_EQ(grid.Cols(), static_cast<int>(kColumnCount));
  for (int column = 0; column < grid.Cols(); ++column) {
    journal.columns.push_back({grid.ColKey(column), grid.TextMatrix(0, column), grid.ColHidden(column),
                               static_cast<int>(grid.ColDataType(column)), grid.ColFormat(column),
                               grid.ColWidth(column)});
  }
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    ShownRow shown{grid.IsSubtotal(row), grid.RowOutlineLevel(row), grid.RowHidden(row), grid.RowHeight(row), {}, {}};
    for (size_t column = 0; column < kColumnCount && static_cast<int>(column) < grid.Cols(); ++column) {
      shown.text[column] = grid.TextMatrix(row, static_cast<int>(column));
      shown.display[column] = grid.DisplayText(row, static_cast<int>(column));
    }
    journal.rows.push_back(std::move(shown));
  }
  return journal;
}

ShownJournal FromNdjson(std::string_view lines) {
  ShownJournal journal;
  EXPECT_TRUE(lines.ends_with("\n"));
  bool head = true;
  for (int row = 1; !lines.empty();) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    if (head)
      ReadHead(ObjectOf(line), journal);
    else
      journal.rows.push_back(ReadRow(ObjectOf(line), row++));
    head = false;
  }
  return journal;
}

}  // namespace stockbook::end_to_end
