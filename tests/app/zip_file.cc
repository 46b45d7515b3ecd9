// SPDX-License-Identifier: MIT
#include "app/zip_file.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>

namespace stockbook::app {
namespace {

const std::string kXml = R"(<?xml version="1.0" encoding="UTF-8"?>)";
const std::string kMain = R"(xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main")";
const std::string kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string Little(uint32_t number, int bytes) {
  std::string text;
  for (int byte = 0; byte < bytes; ++byte) text += static_cast<char>(number >> 8 * byte & 0xFF);
  return text;
}

uint32_t LittleAt(const std::string& text, size_t at, size_t bytes) {
  uint32_t number = 0;
  for (size_t byte = bytes; byte-- > 0;) number = number << 8 | static_cast<unsigned char>(text.at(at + byte));
  return number;
}

// What both heads of a part say: no compression, no date, its sum and its sizes, and the length of its name.
std::string PartFacts(const std::string& name, const std::string& content) {
  const auto size = static_cast<uint32_t>(content.size());
  const auto sum = static_cast<uint32_t>(
      crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
  return Little(20, 2) + Little(0, 2) + Little(0, 2) + Little(0, 4) + Little(sum, 4) + Little(size, 4) +
         Little(size, 4) + Little(static_cast<uint32_t>(name.size()), 2) + Little(0, 2);
}

std::string Inflated(const std::string& packed, size_t size) {
  std::string content(size, '\0');
  z_stream stream{};
  EXPECT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = reinterpret_cast<Bytef*>(content.data());
  stream.avail_out = static_cast<uInt>(size);
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  inflateEnd(&stream);
  return content;
}

std::string Relation(const std::string& id, const std::string& type, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + kOffice + "/" + type + "\" Target=\"" + target + "\"/>";
}

std::string Relations(const std::string& relations) {
  return kXml + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" + relations +
         "</Relationships>";
}

}  // namespace

std::string MakeZip(const ZipParts& parts) {
  std::string archive;
  std::string list;
  for (const auto& [name, content] : parts) {
    const std::string facts = PartFacts(name, content);
    const auto at = static_cast<uint32_t>(archive.size());
    archive += "PK\3\4" + facts + name + content;
    list += "PK\1\2" + Little(20, 2) + facts + Little(0, 2) + Little(0, 2) + Little(0, 2) + Little(0, 4) +
            Little(at, 4) + name;
  }
  const auto count = static_cast<uint32_t>(parts.size());
  const auto list_at = static_cast<uint32_t>(archive.size());
  return archive + list + "PK\5\6" + Little(0, 4) + Little(count, 2) + Little(count, 2) +
         Little(static_cast<uint32_t>(list.size()), 4) + Little(list_at, 4) + Little(0, 2);
}

std::string ZipPart(const std::string& archive, const std::string& name) {
  const size_t end = archive.rfind("PK\5\6");
  if (end == std::string::npos) {
    ADD_FAILURE() << "no archive";
    return {};
  }
  size_t at = LittleAt(archive, end + 16, 4);
  for (uint32_t left = LittleAt(archive, end + 10, 2); left > 0; --left) {
    const size_t name_bytes = LittleAt(archive, at + 28, 2);
    if (archive.substr(at + 46, name_bytes) == name) {
      const size_t local = LittleAt(archive, at + 42, 4);
      const size_t begin = local + 30 + LittleAt(archive, local + 26, 2) + LittleAt(archive, local + 28, 2);
      const std::string content = archive.substr(begin, LittleAt(archive, at + 20, 4));
      return LittleAt(archive, at + 10, 2) == 0 ? content : Inflated(content, LittleAt(archive, at + 24, 4));
    }
    at += 46 + name_bytes + LittleAt(archive, at + 30, 2) + LittleAt(archive, at + 32, 2);
  }
  ADD_FAILURE() << "no part " << name;
  return {};
}

std::string MakeWorkbook(const WorkbookXml& xml) {
  const std::string sheet = kXml + "<worksheet " + kMain + "><sheetData>";
  return MakeZip({
      {"_rels/.rels", Relations(Relation("r1", "officeDocument", "xl/workbook.xml"))},
      {"xl/workbook.xml", kXml + "<workbook " + kMain + " xmlns:r=\"" + kOffice + "\">" + xml.workbook +
                              "<sheets><sheet name=\"空\" sheetId=\"1\" r:id=\"r1\"/>"
                              "<sheet name=\"明细\" sheetId=\"2\" r:id=\"r2\"/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels",
       Relations(Relation("r1", "worksheet", "worksheets/sheet1.xml") +
                 Relation("r2", "worksheet", "/xl/worksheets/sheet2.xml") +
                 Relation("r3", "sharedStrings", "sharedStrings.xml") + Relation("r4", "styles", "styles.xml"))},
      {"xl/worksheets/sheet1.xml", sheet + "</sheetData></worksheet>"},
      {"xl/worksheets/sheet2.xml", sheet + xml.sheet + "</sheetData></worksheet>"},
      {"xl/sharedStrings.xml", kXml + "<sst " + kMain + ">" + xml.shared_strings + "</sst>"},
      {"xl/styles.xml", kXml + "<styleSheet " + kMain + "><numFmts>" + xml.formats +
                            "</numFmts><cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs><cellXfs>" + xml.cell_formats +
                            "</cellXfs></styleSheet>"},
  });
}

}  // namespace stockbook::app
