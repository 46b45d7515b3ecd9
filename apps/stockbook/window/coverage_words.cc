// SPDX-License-Identifier: MIT
#include "stockbook/window/coverage_words.h"

#include "qt/sheet/text.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {
namespace {

using Listed = JournalCoverage::Listed;

QString ListedMembers(const JournalCoverage& coverage) {
  const bool of_suppliers = coverage.of_suppliers;
  const QString code = qt::ToQString(coverage.code);
  switch (coverage.listed) {
    case Listed::kAsHeaded:
      return {};
    case Listed::kWithClass:
      return of_suppliers ? HostText("有分类的供应商") : HostText("有分类的客户");
    case Listed::kOfClass:
      return (of_suppliers ? HostText("分类以“%1”开头的供应商") : HostText("分类以“%1”开头的客户")).arg(code);
    case Listed::kEverything:
      return (of_suppliers ? HostText("全部记录，因为没有分类以“%1”开头的供应商")
                           : HostText("全部记录，因为没有分类以“%1”开头的客户"))
          .arg(code);
  }
  return {};
}

QString PartnersLeftOut(const JournalCoverage& coverage) {
  return (coverage.of_suppliers ? HostText("%L1 个供应商") : HostText("%L1 个客户")).arg(coverage.partners_left_out);
}

QString LinesLeftOut(const JournalCoverage& coverage) {
  return (coverage.of_suppliers ? HostText("%L1 行没有供应商的记录") : HostText("%L1 行没有客户的记录"))
      .arg(coverage.lines_left_out);
}

}  // namespace

QString ShortCoverage(const JournalCoverage& coverage) {
  if (coverage.IsComplete()) return ListedMembers(coverage);
  const QString lines = HostText("%L1 行").arg(coverage.lines_left_out);
  if (coverage.partners_left_out == 0) return HostText("未列入 %1").arg(lines);
  if (coverage.lines_left_out == 0) return HostText("未列入 %1").arg(PartnersLeftOut(coverage));
  return HostText("未列入 %1、%2").arg(PartnersLeftOut(coverage), lines);
}

QString CoverageSentence(const JournalCoverage& coverage) {
  const QString members = ListedMembers(coverage);
  if (members.isEmpty()) return {};
  if (coverage.IsComplete()) return HostText("本台账列出%1。").arg(members);
  if (coverage.partners_left_out == 0)
    return HostText("本台账列出%1，没有列入 %2。").arg(members, LinesLeftOut(coverage));
  if (coverage.lines_left_out == 0)
    return HostText("本台账列出%1，没有列入其他 %2。").arg(members, PartnersLeftOut(coverage));
  return HostText("本台账列出%1，没有列入其他 %2，也没有列入 %3。")
      .arg(members, PartnersLeftOut(coverage), LinesLeftOut(coverage));
}

}  // namespace stockbook::app
