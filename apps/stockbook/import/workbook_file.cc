// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_file.h"

#include <zip.h>

#include <memory>
#include <new>

#include "databases/late/late_library.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_parts.h"

namespace stockbook::app {
namespace {

// The library of archives, which brings those of encryption, is loaded with the first workbook that is imported. Its
// functions are called as ever.
constexpr databases::LateLibrary kZipLibrary(STOCKBOOK_ZIP_FILE);
constinit const databases::LateFunction<decltype(::zip_discard)> zip_discard(kZipLibrary, "zip_discard");
constinit const databases::LateFunction<decltype(::zip_fclose)> zip_fclose(kZipLibrary, "zip_fclose");
constinit const databases::LateFunction<decltype(::zip_fopen)> zip_fopen(kZipLibrary, "zip_fopen");
constinit const databases::LateFunction<decltype(::zip_fread)> zip_fread(kZipLibrary, "zip_fread");
constinit const databases::LateFunction<decltype(::zip_open_from_source)> zip_open_from_source(kZipLibrary,
                                                                                               "zip_open_from_source");
constinit const databases::LateFunction<decltype(::zip_source_buffer_create)> zip_source_buffer_create(
    kZipLibrary, "zip_source_buffer_create");
constinit const databases::LateFunction<decltype(::zip_source_free)> zip_source_free(kZipLibrary, "zip_source_free");

// "worksheets/sheet1.xml" from "xl/workbook.xml" is "xl/worksheets/sheet1.xml".
std::string Resolved(std::string_view from, std::string target) {
  if (target.starts_with('/')) return target.substr(1);
  std::string folder(from.substr(0, from.rfind('/') + 1));
  while (target.starts_with("../")) {
    target.erase(0, 3);
    if (!folder.empty()) folder.erase(folder.substr(0, folder.size() - 1).rfind('/') + 1);
  }
  return folder + target;
}

// "xl/_rels/workbook.xml.rels" for "xl/workbook.xml".
std::string RelationsOf(const std::string& part) {
  const size_t name = part.rfind('/') + 1;
  return part.substr(0, name) + "_rels/" + part.substr(name) + ".rels";
}

// The archive that a workbook is, in memory.
class WorkbookArchive {
 public:
  WorkbookArchive(std::string_view bytes, std::string name) : name_(std::move(name)) {
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    if (source == nullptr) throw std::bad_alloc();
    archive_.reset(zip_open_from_source(source, ZIP_RDONLY, nullptr));
    if (archive_ != nullptr) return;
    zip_source_free(source);
    Fail();
  }

  enum class Need { kNeeded, kOptional };
  void Read(const std::string& part, XmlListener& listener, Need need = Need::kNeeded) const {
    const std::unique_ptr<zip_file_t, Close> file(zip_fopen(archive_.get(), part.c_str(), 0));
    if (file == nullptr && need == Need::kOptional) return;
    if (file == nullptr) Fail();
    const auto read = [&](char* buffer, size_t size) {
      const zip_int64_t count = zip_fread(file.get(), buffer, size);
      if (count < 0) Fail();
      unpacked_ += static_cast<size_t>(count);
      if (unpacked_ > kMostUnpackedBytes) Fail();
      return static_cast<size_t>(count);
    };
    if (!ReadXml(read, listener)) Fail();
  }

 private:
  // What the list of parts says they unpack to may be wrong.
  static constexpr size_t kMostUnpackedBytes = size_t{1} << 31;

  [[noreturn]] void Fail() const {
    throw TableError({"Cannot read '" + name_ +
                          "': the workbook is damaged or protected by a password; save it anew in "
                          "a spreadsheet program.",
                      "无法读取“" + name_ + "”：工作簿已损坏或设有密码，请用电子表格程序重新保存。"});
  }

  std::string name_;
  struct Close {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
  };
  struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };
  std::unique_ptr<zip_t, Discard> archive_;
  mutable size_t unpacked_ = 0;
};

}  // namespace

bool CanReadWorkbooks() { return true; }

Workbook ReadWorkbookFile(std::string_view bytes, const std::string& name) {
  using Need = WorkbookArchive::Need;
  const WorkbookArchive archive(bytes, name);
  RelationsPart roots;
  archive.Read("_rels/.rels", roots);
  const std::string main = Resolved("", roots.TargetOfType("/officeDocument"));
  RelationsPart relations;
  archive.Read(RelationsOf(main), relations);
  WorkbookPart part;
  archive.Read(main, part);
  Workbook workbook;
  SharedTextsPart shared(workbook.texts);
  StylesPart styles;
  if (const std::string target = relations.TargetOfType("/sharedStrings"); !target.empty())
    archive.Read(Resolved(main, target), shared, Need::kOptional);
  if (const std::string target = relations.TargetOfType("/styles"); !target.empty())
    archive.Read(Resolved(main, target), styles, Need::kOptional);
  for (const WorkbookPart::Sheet& sheet : part.sheets()) {
    const std::string target = relations.Target(sheet.relation);
    if (target.empty()) continue;
    workbook.sheets.push_back({sheet.name, {}});
    SheetPart cells({workbook.texts, shared, styles, part.epoch_day()}, workbook.sheets.back());
    archive.Read(Resolved(main, target), cells);
  }
  return workbook;
}

}  // namespace stockbook::app
