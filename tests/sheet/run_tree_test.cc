// SPDX-License-Identifier: MIT
#include "sheet/store/run_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "sheet/store/interval_map.h"
#include "sheet/store/row_order.h"

namespace stockbook::sheet {
namespace {

struct ColourTraits {
  using Value = int;
  struct Summary {
    int64_t sum = 0;
    int values = 0;  // one bit per existing value
    bool operator==(const Summary&) const = default;
  };
  static Summary Of(int value, int64_t count) { return {value * count, count > 0 ? 1 << value : 0}; }
  static Summary Combine(const Summary& left, const Summary& right) {
    return {left.sum + right.sum, left.values | right.values};
  }
  static int Advance(int value, int64_t) { return value; }
  static bool Continues(int value, int64_t, int next) { return value == next; }
};

TEST(RunTree, AgreesWithAPlainListUnderRandomEdits) {
  std::mt19937 random(1);
  RunTree<ColourTraits> tree;
  std::vector<int> list;
  const auto below = [&](size_t limit) { return static_cast<int64_t>(random() % limit); };
  for (int round = 0; round < 6000; ++round) {
    const auto size = static_cast<int64_t>(list.size());
    const int64_t first = below(list.size() + 1);
    const int64_t last = first + below(static_cast<size_t>(size - first) + 1);
    const auto value = static_cast<int>(below(4));
    switch (below(3)) {
      case 0: {
        const int64_t count = below(6);
        tree.Insert(first, count, value);
        list.insert(list.begin() + first, static_cast<size_t>(count), value);
        break;
      }
      case 1:
        if (last - first > 20) break;
        tree.Remove(first, last - first);
        list.erase(list.begin() + first, list.begin() + last);
        break;
      default:
        tree.Update(first, last, [&](int& at) { at = (at + value) % 4; });
        for (int64_t at = first; at < last; ++at)
          list[static_cast<size_t>(at)] = (list[static_cast<size_t>(at)] + value) % 4;
    }
    ASSERT_TRUE(tree.CheckInvariants()) << round;
    ASSERT_EQ(tree.size(), static_cast<int64_t>(list.size()));
    int64_t sum = 0;
    int64_t expected = -1;
    const int64_t wanted = below(40);
    const int64_t probe = below(list.size() + 1);
    for (int64_t at = 0; at < tree.size(); ++at) {
      if (at == probe) {
        ASSERT_EQ(tree.Before(probe).sum, sum);
      }
      sum += list[static_cast<size_t>(at)];
      if (expected < 0 && sum > wanted) expected = at;
    }
    if (probe < tree.size()) {
      ASSERT_EQ(tree.At(probe), list[static_cast<size_t>(probe)]);
    }
    ASSERT_EQ(tree.FindFirst([&](const auto& prefix) { return prefix.sum > wanted; }),
              expected < 0 ? tree.size() : expected);
  }
}

TEST(RunTree, ChangesWholeRunsAndFindsTheNearestOfAValue) {
  std::mt19937 random(8);
  const auto below = [&](size_t limit) { return static_cast<int64_t>(random() % limit); };
  for (int round = 0; round < 300; ++round) {
    RunTree<ColourTraits> tree;
    std::vector<int> list;
    while (list.size() < 60) {
      const auto value = static_cast<int>(below(4));
      const int64_t count = 1 + below(5);
      tree.Insert(tree.size(), count, value);
      list.insert(list.end(), static_cast<size_t>(count), value);
    }
    for (int step = 0; step < 30; ++step) {
      const auto run = tree.RunAt(below(list.size()));
      const auto to = static_cast<int>(below(4));
      tree.Update(run.first, run.first + run.count, [&](int& value) { value = to; });
      std::fill_n(list.begin() + run.first, run.count, to);
      ASSERT_TRUE(tree.CheckInvariants());
      const int64_t row = below(list.size() + 1);
      const auto has = [&](const auto& sum) { return (sum.values >> to & 1) != 0; };
      const auto from = std::find(list.begin() + row, list.end(), to);
      ASSERT_EQ(tree.FindFrom(row, has), from == list.end() ? -1 : from - list.begin());
      const auto before = std::find(list.rend() - row, list.rend(), to);
      ASSERT_EQ(tree.FindBefore(row, has), list.rend() - before - 1);
    }
    const int64_t first = below(list.size());
    const int64_t last = first + below(list.size() + 1 - static_cast<size_t>(first));
    std::vector<int> seen;
    tree.ForEach(first, last, [&](const auto& place) {
      EXPECT_EQ(place.first, first + static_cast<int64_t>(seen.size()));
      seen.insert(seen.end(), static_cast<size_t>(place.count), place.value);
      return seen.size() < 25;
    });
    const auto wanted = std::min<int64_t>(last - first, static_cast<int64_t>(seen.size()));
    ASSERT_TRUE(seen.size() >= 25 || static_cast<int64_t>(seen.size()) == last - first);
    ASSERT_TRUE(std::equal(seen.begin(), seen.begin() + wanted, list.begin() + first));
  }
}

TEST(RunTree, JoinsNeighboursThatAreAlike) {
  RunTree<ColourTraits> tree;
  tree.Insert(0, 1000000, 1);
  tree.Insert(500000, 1, 2);
  EXPECT_EQ(tree.RunCount(), 3U);
  tree.Update(500000, 500001, [](int& value) { value = 1; });
  EXPECT_EQ(tree.RunCount(), 1U);
  tree.Insert(500000, 1, 2);
  tree.Remove(500000, 1);
  EXPECT_EQ(tree.RunCount(), 1U);
}

TEST(RunTree, StaysShallowUnderManyInsertsAndRemovals) {
  std::mt19937 random(2);
  RunTree<ColourTraits> tree;
  tree.Insert(0, 1000000, 0);
  for (int round = 0; round < 100000; ++round)
    tree.Insert(static_cast<int64_t>(random()) % tree.size(), 1, 1 + round % 3);
  EXPECT_EQ(tree.size(), 1100000);
  for (int round = 0; round < 100000; ++round) tree.Remove(static_cast<int64_t>(random()) % tree.size(), 1);
  EXPECT_EQ(tree.size(), 1000000);
  EXPECT_TRUE(tree.CheckInvariants());
}

TEST(RowOrder, FindsEveryRecordAfterRandomInsertsAndRemovals) {
  std::mt19937 random(3);
  RowOrder order;
  order.AppendRecords(50);
  std::vector<RowId> list;
  for (RowId record = 0; record < 50; ++record) list.push_back(record);
  RowId next = -1;
  for (int round = 0; round < 4000; ++round) {
    const auto row = static_cast<int64_t>(random() % (list.size() + 1));
    if (random() % 2 == 0 && list.size() < 120) {
      order.Insert(row, 1);
      list.insert(list.begin() + row, next--);
    } else if (row < static_cast<int64_t>(list.size()) && random() % 4 == 0) {
      order.Remove(row, 1);
      list.erase(list.begin() + row);
    } else if (random() % 100 == 0) {
      std::vector<int64_t> rows;
      for (int64_t at = 0; at < static_cast<int64_t>(list.size()); ++at) {
        if (random() % 10 == 0) rows.push_back(at);
      }
      order.InsertBeforeEach(rows);
      for (size_t at = 0; at < rows.size(); ++at)
        list.insert(list.begin() + rows[at] + static_cast<int64_t>(at), next--);
    }
    ASSERT_TRUE(order.CheckInvariants());
    ASSERT_EQ(order.Rows(), static_cast<int64_t>(list.size()));
    const auto record = static_cast<int64_t>(random() % 51);
    const auto found = std::find(list.begin(), list.end(), record);
    ASSERT_EQ(order.RowOfRecord(record), found == list.end() ? -1 : found - list.begin());
    if (!list.empty()) {
      const auto probe = static_cast<int64_t>(random() % list.size());
      ASSERT_EQ(order.IdAt(probe), list[static_cast<size_t>(probe)]);
    }
  }
}

TEST(RowOrder, TellsTheIdsOfARangeAsFewRanges) {
  RowOrder order;
  order.AppendRecords(1000);
  order.InsertBeforeEach({0, 100, 200, 300});
  const auto ids = order.IdsOf(0, order.Rows());
  ASSERT_EQ(ids.size(), 2U);
  EXPECT_EQ(ids[0], (RowIdRange{-4, 0}));
  EXPECT_EQ(ids[1], (RowIdRange{0, 1000}));
}

TEST(IntervalMap, AgreesWithAPlainListUnderRandomEdits) {
  std::mt19937 random(4);
  IntervalMap map;
  std::vector<uint32_t> list(200, 0);
  for (int round = 0; round < 5000; ++round) {
    const auto first = static_cast<int64_t>(random() % 200);
    const auto last = first + static_cast<int64_t>(random() % 30);
    const auto add = static_cast<uint32_t>(random() % 3);
    const auto change = [&](uint32_t code) { return (code + add) % 3; };
    map.Update(first - 100, std::min<int64_t>(last, 200) - 100, change);
    for (int64_t at = first; at < std::min<int64_t>(last, 200); ++at)
      list[static_cast<size_t>(at)] = change(list[static_cast<size_t>(at)]);
    ASSERT_TRUE(map.CheckInvariants()) << round;
    for (int64_t at = 0; at < 200; ++at)
      ASSERT_EQ(map.At(at - 100), list[static_cast<size_t>(at)]) << round << ' ' << at;
  }
  map.Erase(-100, 100);
  EXPECT_TRUE(map.IsEmpty());
}

}  // namespace
}  // namespace stockbook::sheet
