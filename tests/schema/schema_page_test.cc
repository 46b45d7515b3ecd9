// SPDX-License-Identifier: MIT
#include "schema/schema_page.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace stockbook::testing {
namespace {

TEST(SchemaPage, IsTheOneThatTheCodeGives) {
  std::ifstream file(STOCKBOOK_SOURCE_DIR "/docs/schema.md");
  const std::string page((std::istreambuf_iterator<char>(file)), {});
  EXPECT_TRUE(page == SchemaPage()) << "run tools/draw-schema";
}

TEST(SchemaPage, HasEveryJournalInBothDialects) {
  const std::string page = SchemaPage();
  for (const char* part :
       {"FROM 仓库余额表 AS bn Where bn.PdID=35 AND bn.DpID=2", "Where Recs.ksID in (5,6)",
        "Where (Recs.ksID = 2) And Recs.pdID=35", "And Recs.pjID in (3,4)", "Convert(Char(10),Dir.BillDate,23)",
        "Where ID=4", "Where r.RecID=17", "tqCustBalance AS bn  Where bn.ksID in (7,8)"})
    EXPECT_NE(page.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace stockbook::testing
