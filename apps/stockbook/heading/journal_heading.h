// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::app {

// What a page, a title or a file says of the journal in it: whose it is and of what, of which periods, from where and
// when. It makes these words in one place, so that the window, paper and files agree; it shows nothing itself. A value.
class JournalHeading {
 public:
  // What the words are made of; an empty text leaves its part out.
  struct Facts {
    int journal_type = 0;     // as in JournalOptions
    std::string caption;      // as the journal's header shows it
    std::string first_range;  // of the shown lines: the first period or day
    std::string last_range;
    std::string source;  // as DatabaseSource names it
    std::string made;    // "2026-11-22 22:40"
  };

  JournalHeading() = default;
  explicit JournalHeading(Facts facts) : facts_(std::move(facts)) {}

  // "客户台账" (customer journal).
  std::string Journal() const;
  // "客户:华东\上海 [商品:六角螺栓]", as the header has it.
  const std::string& Subject() const { return facts_.caption; }
  // "客户台账　客户:华东\上海", on top of a page.
  std::string Page() const;
  // "期间:2025-01 至 2025-12"; "" for a journal without lines.
  std::string Range() const;
  // "打印时间:2026-11-22 22:40".
  std::string Made() const;
  // "来源:sample.db", without the folders.
  std::string Source() const;
  // "客户:华东\上海 — sample.db", the title of the window; the program's name without an inventory.
  std::string WindowTitle() const;
  // "客户台账 华东 上海 2025-01 至 2025-12", a name for a file: no character that any file system refuses, and no more
  // than sixty, for which the subject is cut off and not the range.
  std::string FileName() const;

 private:
  std::string ShortSource() const;
  std::string RangeWords() const;

  Facts facts_;
};

// The first and the last of the periods of the lines that a sheet shows; those of closed periods count, for they are
// folded and not left out. "" if there are none. O(runs of rows).
struct ShownRange {
  std::string first;
  std::string last;
};
ShownRange RangeShownIn(const sheet::Sheet& sheet);

// The product of a partner journal, as the header of a project journal names it: "商品:六角螺栓[1001]{M8\GB5783}
// 单位:千克". "" for other journals and for those of all products. If it cannot be read, its number stands for it.
std::string ProductOfPartnerJournal(platform::Connection& connection, const JournalOptions& options);

}  // namespace stockbook::app
