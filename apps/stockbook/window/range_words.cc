// SPDX-License-Identifier: MIT
#include "stockbook/window/range_words.h"

#include "qt/sheet/text.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {

QString BoundWords(const RangeBound& bound) {
  const char* range = "区间";
  const bool is_chinese = HostText(range) == QString::fromUtf8(range);
  return qt::ToQString(is_chinese ? bound.Caption() : bound.Text());
}

QString RangeWords(const JournalRange& range) {
  if (range.IsAll()) return HostText("全部");
  if (!range.to) return HostText("%1起").arg(BoundWords(*range.from));
  if (!range.from) return HostText("至%1").arg(BoundWords(*range.to));
  if (*range.from == *range.to) return BoundWords(*range.from);
  return HostText("%1至%2").arg(BoundWords(*range.from), BoundWords(*range.to));
}

QString PresetWords(RangePreset preset) {
  switch (preset) {
    case RangePreset::kAll:
      return HostText("全部");
    case RangePreset::kThisMonth:
      return HostText("本月");
    case RangePreset::kLastMonth:
      return HostText("上月");
    case RangePreset::kThisQuarter:
      return HostText("本季度");
    case RangePreset::kThisYear:
      return HostText("本年");
    case RangePreset::kNewestPeriod:
      return HostText("最末期间");
  }
  return {};
}

}  // namespace stockbook::app
