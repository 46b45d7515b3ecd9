// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "stockbook/heading/journal_coverage.h"

namespace stockbook::app {

// A journal's coverage in the user's words. Both are empty where there is nothing to tell.

// For a line of messages: "未列入 3 个客户、12 行", or what is listed where nothing is left out.
QString ShortCoverage(const JournalCoverage& coverage);
// "本台账列出分类以“0”开头的客户，没有列入其他 3 个客户，也没有列入 12 行没有客户的记录。"
QString CoverageSentence(const JournalCoverage& coverage);

}  // namespace stockbook::app
