// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "journal/subjects.h"
#include "stockbook/base/journal_type.h"

namespace stockbook::interaction {

// The header's caption and the key of its picture.
struct JournalCaption {
  std::string text;
  std::string_view picture_key;
};

// Composes the caption of a journal from its type, second key and class code:
//   stock     商品:六角螺栓[1001]{M8\GB5783} 单位:千克/件 [全部仓库]
//   partner   发货单位:华东\上海\某某五金厂        全部发货单位        a class: its path
//   project   项目:基建\一号楼 [商品:六角螺栓[1001]{M8\GB5783} 单位:件]
// A missing part reads "(无)". `titles` are the four subject titles. Statements that fail leave their part out.
JournalCaption ComposeCaption(const journal::Inventory& inventory, base::tqJournalTypeContants type,
                              const journal::SubjectKeys& keys, const journal::SubjectTexts& subject,
                              const std::array<std::string, 4>& titles);

}  // namespace stockbook::interaction
