// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/import/workbook_cells.h"
#include "stockbook/import/xml_part.h"

namespace stockbook::app {

// The parts of an .xlsx file, each as what hears of its XML.

// What a part refers to: file names by identifier, and the first one by the end of its type.
class RelationsPart : public XmlListener {
 public:
  // "" if there is none.
  std::string Target(std::string_view id) const;
  std::string TargetOfType(std::string_view ending) const;

  void Begin(std::string_view element, const XmlAttributes& attributes) override;
  void End(std::string_view) override {}
  void Text(std::string_view) override {}

 private:
  struct Relation {
    std::string id;
    std::string type;
    std::string target;
  };
  std::vector<Relation> relations_;
};

// The sheets of the workbook, and the first day of its calendar.
class WorkbookPart : public XmlListener {
 public:
  struct Sheet {
    std::string name;
    std::string relation;
  };
  const std::vector<Sheet>& sheets() const { return sheets_; }
  // Counted from 1899-12-30.
  int epoch_day() const { return epoch_day_; }

  void Begin(std::string_view element, const XmlAttributes& attributes) override;
  void End(std::string_view) override {}
  void Text(std::string_view) override {}

 private:
  std::vector<Sheet> sheets_;
  int epoch_day_ = 0;
};

// The texts that cells share.
class SharedTextsPart : public XmlListener {
 public:
  explicit SharedTextsPart(TextPool& pool) : pool_(pool) {}
  // The text of the number in the pool's counting; false if there is none.
  bool Find(size_t number, uint32_t& text) const;

  void Begin(std::string_view element, const XmlAttributes& attributes) override;
  void End(std::string_view element) override;
  void Text(std::string_view text) override;

 private:
  TextPool& pool_;
  std::vector<uint32_t> texts_;
  std::string text_;
  bool in_text_ = false;
  bool in_reading_aid_ = false;
};

// Which formats of cells are dates.
class StylesPart : public XmlListener {
 public:
  bool IsDate(size_t cell_format) const;

  void Begin(std::string_view element, const XmlAttributes& attributes) override;
  void End(std::string_view element) override;
  void Text(std::string_view) override {}

 private:
  std::map<size_t, std::string> codes_;
  std::vector<size_t> cell_formats_;
  bool in_cell_formats_ = false;
};

// The cells of a sheet, which are in order after the last element.
class SheetPart : public XmlListener {
 public:
  struct Context {
    TextPool& pool;
    const SharedTextsPart& shared;
    const StylesPart& styles;
    int epoch_day = 0;
  };
  SheetPart(const Context& context, WorkbookSheet& sheet) : context_(context), sheet_(sheet) {}

  void Begin(std::string_view element, const XmlAttributes& attributes) override;
  void End(std::string_view element) override;
  void Text(std::string_view text) override;

 private:
  void BeginCell(const XmlAttributes& attributes);
  void EndCell();
  void Put(uint32_t text);
  void Order();
  std::string ValueText() const;

  Context context_;
  WorkbookSheet& sheet_;
  int row_ = -1;
  int column_ = -1;
  std::string type_;
  size_t format_ = 0;
  std::string value_;
  bool in_value_ = false;
  bool in_reading_aid_ = false;
};

}  // namespace stockbook::app
