// SPDX-License-Identifier: MIT
// The list of the columns in the reference host's window, by a real mouse.
#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "window/desk.h"

namespace stockbook::window {
namespace {

class AnArranger : public WindowTest {
 protected:
  void OpenTheList() {
    Key("ctrl+l");
    ASSERT_TRUE(BecomesSo("list", [](const std::string& list) { return !list.empty(); }));
  }
  Area Listed(size_t row) {
    std::istringstream words(Ask("listed " + std::to_string(row))["rect"]);
    Area area;
    words >> area.x >> area.y >> area.width >> area.height;
    return area;
  }
  void MoveOn(Place to) { Do({"mousemove", std::to_string(to.x), std::to_string(to.y)}); }
  // While the list drags, nobody else is told where the mouse is. Several moves that come at once are one.
  void DragListed(size_t from, Place to) {
    const Place start = Listed(from).Middle();
    Press(start);
    int step = 0;
    ASSERT_TRUE(BecomesSo("dragging", [&](const std::string& dragging) {
      if (dragging != "1") MoveOn({start.x, start.y + 20 + ++step % 8});
      return dragging == "1";
    }));
    MoveOn({to.x, to.y + 2});
    MoveOn(to);
    ASSERT_TRUE(Becomes("over", std::to_string(to.x) + " " + std::to_string(to.y)));
    Release();
    ASSERT_TRUE(Becomes("dragging", "0"));
  }
  // The columns of the journal, without those that are not in the list.
  ::testing::AssertionResult TheJournalBecomes(const std::vector<std::string>& wanted) {
    return BecomesSo("order", [&](const std::string& order) {
      std::vector<std::string> listed;
      for (const std::string& key : Keys(order))
        if (std::find(wanted.begin(), wanted.end(), key) != wanted.end()) listed.push_back(key);
      return listed == wanted;
    });
  }
  static std::vector<std::string> Keys(const std::string& text) {
    std::istringstream words(text);
    std::vector<std::string> keys;
    for (std::string key; words >> key;) keys.push_back(key);
    return keys;
  }
  static std::string Joined(const std::vector<std::string>& keys) {
    std::string text;
    for (const std::string& key : keys) text += key + " ";
    return text;
  }
};

TEST_F(AnArranger, DragsAColumnToItsPlaceInTheList) {
  OpenTheList();
  std::vector<std::string> wanted = Keys(Now("list"));
  ASSERT_GT(wanted.size(), 6U);
  const std::string before = Now("order");
  const std::string moved = wanted[5];
  const Area target = Listed(2);
  ASSERT_NO_FATAL_FAILURE(DragListed(5, {target.x + target.width / 2, target.y + 1}));
  wanted.erase(wanted.begin() + 5);
  wanted.insert(wanted.begin() + 2, moved);
  EXPECT_TRUE(Becomes("list", Joined(wanted)));
  EXPECT_TRUE(TheJournalBecomes(wanted));
  Do({"windowfocus", Now("window")});
  ASSERT_TRUE(Becomes("active", "1"));
  Key("ctrl+z");
  EXPECT_TRUE(Becomes("order", before));
}

TEST_F(AnArranger, DragsAColumnDownInTheList) {
  OpenTheList();
  std::vector<std::string> wanted = Keys(Now("list"));
  const Area target = Listed(9);
  ASSERT_NO_FATAL_FAILURE(DragListed(3, {target.x + target.width / 2, target.y + target.height - 1}));
  wanted.insert(wanted.begin() + 10, wanted[3]);
  wanted.erase(wanted.begin() + 3);
  EXPECT_TRUE(Becomes("list", Joined(wanted)));
  EXPECT_TRUE(TheJournalBecomes(wanted));
}

}  // namespace
}  // namespace stockbook::window
