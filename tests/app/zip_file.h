// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace stockbook::app {

// Names and contents.
using ZipParts = std::vector<std::pair<std::string, std::string>>;

// An archive of the parts as they are, without compression.
std::string MakeZip(const ZipParts& parts);

// A part of an archive, unpacked; "" and a failure of the running test if it is not there.
std::string ZipPart(const std::string& archive, const std::string& name);

// The least that a workbook has, with the XML between <sheetData> and its end, and of further parts.
struct WorkbookXml {
  std::string sheet;
  std::string shared_strings;  // the XML between <sst> and its end
  std::string formats;         // between <numFmts> and its end
  std::string cell_formats;    // between <cellXfs> and its end
  std::string workbook;        // before <sheets>
};
std::string MakeWorkbook(const WorkbookXml& xml);

}  // namespace stockbook::app
