// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "com/ado/ado_connection.h"
#include "com/ado/ado_error.h"
#include "com/ado_double/ado_double.h"

namespace stockbook::com {
namespace {

using platform::ErrorKind;
using testing::AdoFailure;
using testing::AdoLog;
using testing::AdoManner;
using testing::AdoRows;
using testing::MadeRows;

HRESULT Code(uint32_t number) { return static_cast<HRESULT>(number); }

std::shared_ptr<AdoRows> Rows(int32_t count) {
  auto rows = std::make_shared<MadeRows>(std::vector<std::string>{"a", "b"});
  for (int32_t row = 0; row < count; ++row) rows->Add(Variant(row), Variant(std::string_view("x")));
  return rows;
}

platform::Error ErrorOfExecute(IDispatch* object) {
  try {
    OpenAdoConnection(object)->Execute("Select");
  } catch (const platform::Error& error) {
    return error;
  }
  ADD_FAILURE() << "nothing was thrown";
  return {"", ""};
}

platform::Error ErrorOfManner(AdoLog& log, const AdoManner& manner, int32_t rows) {
  const auto object = testing::MakeAdoDouble(
      log, "", [rows](const std::string&) { return Rows(rows); }, manner);
  return ErrorOfExecute(object.get());
}

platform::Error ErrorOfFailing(const AdoFailure& failure) {
  AdoLog log;
  const auto object =
      testing::MakeAdoDouble(log, "", [&](const std::string&) -> std::shared_ptr<AdoRows> { throw failure; });
  return ErrorOfExecute(object.get());
}

TEST(AdoErrors, KeepNumberAndDescription) {
  const auto error = ErrorOfFailing({Code(0x80040E37), "找不到输入表\r\n或查询“商品资料”。"});
  EXPECT_EQ(error.native_code(), Code(0x80040E37));
  EXPECT_EQ(error.kind(), ErrorKind::kStatement);
  EXPECT_EQ(error.operation(), "Execute");
  EXPECT_STREQ(error.what(), "数据库没有执行语句：找不到输入表 或查询“商品资料”。（错误 0x80040E37）");
}

TEST(AdoErrors, ReadTheNumbersOfVisualBasicAsAutomationDoes) {
  const auto error = ErrorOfFailing({13, "类型不匹配"});
  EXPECT_EQ(error.native_code(), Code(0x800A000D));
  EXPECT_EQ(error.kind(), ErrorKind::kStatement);
}

TEST(AdoErrors, NeedNoDescription) {
  EXPECT_STREQ(ErrorOfFailing({Code(0x80040E14), ""}).what(), "数据库没有执行语句（错误 0x80040E14）");
}

TEST(AdoErrors, TellARefusedStatementFromAnEngineThatCannotAnswer) {
  const struct {
    uint32_t number;
    ErrorKind kind;
  } kExpected[] = {
      {0x80040E14, ErrorKind::kStatement},   {0x80040E10, ErrorKind::kStatement},
      {0x80040E57, ErrorKind::kStatement},   {0x80040E09, ErrorKind::kStatement},
      {0x80070057, ErrorKind::kStatement},   {0x800A0BB9, ErrorKind::kStatement},
      {0x80004005, ErrorKind::kInputOutput}, {0x800A0E78, ErrorKind::kInputOutput},
      {0x800A0E7D, ErrorKind::kInputOutput}, {0x800706BA, ErrorKind::kInputOutput},
      {0x80010108, ErrorKind::kInputOutput}, {0x80040E4D, ErrorKind::kInputOutput},
      {0x80040E31, ErrorKind::kInterrupted}, {0x80040E4E, ErrorKind::kInterrupted},
      {0x8007000E, ErrorKind::kMemory},      {0x80070020, ErrorKind::kBusy},
      {0x80010001, ErrorKind::kBusy},        {0x80070570, ErrorKind::kDamaged},
  };
  for (const auto& expected : kExpected) {
    const auto error = ErrorOfFailing({Code(expected.number), "x"});
    EXPECT_EQ(error.kind(), expected.kind) << std::hex << expected.number;
    EXPECT_EQ(error.native_code(), Code(expected.number));
  }
}

TEST(AdoErrors, EndAResultThatDiesMidway) {
  for (const auto fetch : {AdoManner::Fetch::kPortions, AdoManner::Fetch::kRowByRow}) {
    for (const size_t row : {size_t{0}, size_t{1}, size_t{255}, size_t{256}, size_t{299}}) {
      AdoLog log;
      AdoManner manner;
      manner.fetch = fetch;
      manner.dies_at_row = row;
      const auto error = ErrorOfManner(log, manner, 300);
      EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
      EXPECT_EQ(error.native_code(), Code(0x80004005));
      EXPECT_NE(std::string(error.what()).find("网络连接中断"), std::string::npos);
      EXPECT_EQ(log.closed, 1);
      EXPECT_EQ(log.objects, 0);
    }
  }
}

TEST(AdoErrors, LeaveTheConnectionUsable) {
  AdoLog log;
  int runs = 0;
  const auto object = testing::MakeAdoDouble(log, "", [&](const std::string&) {
    if (++runs == 1) throw AdoFailure{Code(0x80040E14), "语法错误"};
    return Rows(3);
  });
  const auto connection = OpenAdoConnection(object.get());
  EXPECT_THROW(connection->Execute(""), platform::Error);
  EXPECT_EQ(connection->Execute("").RecordCount(), 3U);
}

// An object with some of a connection's members, or none.
platform::Error ErrorOfObject(testing::NamedObject::Member execute) {
  AdoLog log;
  auto* object = new testing::NamedObject(log, std::nullopt);
  const ComPtr<IDispatch> held(object);
  if (execute) object->Add(L"Execute", std::move(execute));
  return ErrorOfExecute(object);
}

TEST(AdoErrors, NameTheMemberThatAnObjectLacks) {
  const auto error = ErrorOfObject(nullptr);
  EXPECT_EQ(error.native_code(), DISP_E_UNKNOWNNAME);
  EXPECT_TRUE(error.IsOfEngine());
  EXPECT_NE(std::string(error.what()).find("Execute"), std::string::npos);
}

TEST(AdoErrors, ToldWhereExecuteGivesNoRecordset) {
  using Arguments = std::vector<const VARIANT*>;
  EXPECT_EQ(ErrorOfObject([](const Arguments&) { return Variant(); }).native_code(), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(ErrorOfObject([](const Arguments&) { return Variant(int32_t{5}); }).native_code(), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(ErrorOfObject([](const Arguments&) { return Variant(static_cast<IDispatch*>(nullptr)); }).native_code(),
            DISP_E_TYPEMISMATCH);
}

TEST(AdoErrors, ToldWhereAConnectionHasNoConnectionString) {
  AdoLog log;
  const ComPtr<IDispatch> object(new testing::NamedObject(log, std::nullopt));
  const auto connection = OpenAdoConnection(object.get());
  EXPECT_THROW(connection->ConnectionString(), platform::Error);
}

Variant ArrayOf(VARTYPE type, std::vector<ULONG> sizes) {
  std::vector<SAFEARRAYBOUND> bounds;
  for (const ULONG size : sizes) bounds.push_back({size, 0});
  Variant array;
  array.get().parray = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
  array.get().vt = static_cast<VARTYPE>(VT_ARRAY | type);
  return array;
}

void ExpectRefused(const std::function<Variant()>& rows) {
  AdoLog log;
  AdoManner manner;
  manner.instead_of_rows = rows;
  EXPECT_EQ(ErrorOfManner(log, manner, 3).kind(), ErrorKind::kInputOutput);
  EXPECT_EQ(log.closed, 1);
  EXPECT_EQ(log.portions, 1);
}

TEST(AdoErrors, ToldWhereGetRowsGivesSomethingElse) {
  ExpectRefused([] { return Variant(); });
  ExpectRefused([] { return Variant(int32_t{1}); });
  ExpectRefused([] { return ArrayOf(VT_VARIANT, {2}); });
  ExpectRefused([] { return ArrayOf(VT_VARIANT, {2, 3, 1}); });
  ExpectRefused([] { return ArrayOf(VT_I4, {2, 3}); });
  ExpectRefused([] { return ArrayOf(VT_VARIANT, {3, 3}); });
  ExpectRefused([] { return ArrayOf(VT_VARIANT, {1, 3}); });
}

TEST(AdoErrors, EndARecordsetThatStandsStill) {
  ExpectRefused([] { return ArrayOf(VT_VARIANT, {2, 0}); });
}

}  // namespace
}  // namespace stockbook::com
