// SPDX-License-Identifier: MIT
// Recordsets that do not do what ADO's do.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "com/ado/ado_connection.h"
#include "com/ado_double/named_object.h"
#include "stockbook/platform/error.h"

namespace stockbook::com {
namespace {

using testing::AdoFailure;
using testing::AdoLog;
using testing::NamedObject;
using Arguments = std::vector<const VARIANT*>;

constexpr auto kClosedObject = static_cast<HRESULT>(0x800A0E78);

Variant ObjectVariant(NamedObject* object) { return Variant(static_cast<IDispatch*>(object)); }

// A recordset with one field, whose members a test replaces.
struct Manners {
  NamedObject::Member eof;
  NamedObject::Member get_rows;
  NamedObject::Member fields;
  NamedObject::Member count = [](const Arguments&) { return Variant(int32_t{1}); };
  NamedObject::Member name = [](const Arguments&) { return Variant(std::string_view("it")); };
};

class AdoMisconduct : public ::testing::Test {
 protected:
  // Texts of the one field, one after the other, or what went wrong.
  std::string Read(const Manners& manners) {
    auto* connection = new NamedObject(log_, std::nullopt);
    const ComPtr<IDispatch> held(connection);
    connection->Add(L"Execute", [&](const Arguments&) { return Recordset(manners); });
    std::string texts;
    try {
      for (auto rows = OpenAdoConnection(held.get())->Execute("Select"); !rows.AtEnd(); rows.MoveNext())
        texts += rows.FieldValue(0).Text() + "|";
    } catch (const platform::Error& error) {
      return error.what();
    }
    return texts;
  }

  // A portion with the texts, whose dimensions begin at `lower`.
  static Variant Portion(const std::vector<std::string>& texts, LONG lower) {
    SAFEARRAYBOUND bounds[2] = {{1, lower}, {static_cast<ULONG>(texts.size()), lower}};
    Variant portion;
    portion.get().parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    portion.get().vt = VT_ARRAY | VT_VARIANT;
    for (size_t row = 0; row < texts.size(); ++row) {
      LONG at[2] = {lower, lower + static_cast<LONG>(row)};
      Variant text{std::string_view(texts[row])};
      SafeArrayPutElement(portion.get().parray, at, &text.get());
    }
    return portion;
  }

  AdoLog log_;
  int closed_ = 0;

 private:
  Variant Recordset(const Manners& manners) {
    auto* object = new NamedObject(log_, std::nullopt, 100);
    object->Add(L"EOF", manners.eof);
    object->Add(L"GetRows", manners.get_rows);
    object->Add(L"Close", [this](const Arguments&) {
      ++closed_;
      return Variant();
    });
    object->Add(
        L"Fields", manners.fields ? manners.fields : [this, manners](const Arguments&) {
          auto* fields = new NamedObject(log_, std::nullopt, 200);
          fields->Add(L"Count", manners.count);
          fields->Add(L"Item", [this, manners](const Arguments&) {
            auto* field = new NamedObject(log_, std::nullopt, 300);
            field->Add(L"Name", manners.name);
            return ObjectVariant(field);
          });
          return ObjectVariant(fields);
        });
    return ObjectVariant(object);
  }
};

// At the end after so many questions.
NamedObject::Member EndsAfter(int questions) {
  return [asked = 0, questions](const Arguments&) mutable { return Variant(asked++ >= questions); };
}

TEST_F(AdoMisconduct, PortionsMayBeSmallerAndLargerThanAskedAndBeginAnywhere) {
  for (const LONG lower : {0, 1, -5, 1000000}) {
    int portion = 0;
    Manners manners;
    manners.eof = EndsAfter(3);
    manners.get_rows = [&](const Arguments&) {
      ++portion;
      if (portion == 1) return Portion({"甲"}, lower);
      if (portion == 2) return Portion(std::vector<std::string>(1000, "乙"), lower);
      return Portion({"丙", "丁"}, lower);
    };
    const std::string texts = Read(manners);
    EXPECT_TRUE(texts.starts_with("甲|乙|乙|")) << lower << " " << texts.substr(0, 100);
    EXPECT_TRUE(texts.ends_with("乙|丙|丁|")) << lower;
    EXPECT_EQ(texts.size(), 1003 * std::string("甲|").size());
  }
  EXPECT_EQ(log_.objects, 0);
}

TEST_F(AdoMisconduct, AnEndThatCannotBeAskedEndsTheResult) {
  Manners manners;
  manners.eof = [asked = 0](const Arguments&) mutable -> Variant {
    if (++asked < 3) return Variant(false);
    throw AdoFailure{static_cast<HRESULT>(0x80004005), "网络连接中断"};
  };
  manners.get_rows = [](const Arguments&) { return Portion({"甲"}, 0); };
  EXPECT_NE(Read(manners).find("网络连接中断"), std::string::npos);
  EXPECT_EQ(closed_, 1);
  EXPECT_EQ(log_.objects, 0);
}

TEST_F(AdoMisconduct, AnEndThatIsNoTruthEndsTheResult) {
  Manners manners;
  manners.get_rows = [](const Arguments&) { return Portion({"甲"}, 0); };
  manners.eof = [](const Arguments&) { return Variant(std::string_view("vielleicht")); };
  EXPECT_NE(Read(manners).find("错误"), std::string::npos);
  Variant null;
  null.get().vt = VT_NULL;
  manners.eof = [&](const Arguments&) { return Variant::CopyOf(null.get()); };
  EXPECT_NE(Read(manners).find("错误"), std::string::npos);
  manners.eof = [](const Arguments&) { return Variant(int32_t{1}); };
  EXPECT_EQ(Read(manners), "") << "a number is a truth as well";
  EXPECT_EQ(closed_, 3);
}

TEST_F(AdoMisconduct, AStatementThatGivesAClosedRecordsetIsRefused) {
  Manners manners;
  manners.fields = [](const Arguments&) -> Variant { throw AdoFailure{kClosedObject, "对象关闭时，不允许操作。"}; };
  EXPECT_NE(Read(manners).find("不允许操作"), std::string::npos);
}

TEST_F(AdoMisconduct, FieldsThatAreNotThereAreNotRead) {
  Manners manners;
  manners.eof = [](const Arguments&) { return Variant(false); };
  manners.count = [](const Arguments&) { return Variant(int32_t{0}); };
  EXPECT_EQ(Read(manners), "");
  manners.count = [](const Arguments&) { return Variant(int32_t{-1}); };
  EXPECT_EQ(Read(manners), "");
  manners.count = [](const Arguments&) { return Variant(std::string_view("viele")); };
  EXPECT_NE(Read(manners).find("错误"), std::string::npos);
  manners.count = [](const Arguments&) { return Variant(int32_t{1}); };
  manners.name = [](const Arguments&) -> Variant { throw AdoFailure{static_cast<HRESULT>(0x800A0CC1), "没有"}; };
  EXPECT_NE(Read(manners).find("没有"), std::string::npos);
  EXPECT_EQ(log_.objects, 0);
}

TEST_F(AdoMisconduct, ATextOfMillionsOfCharactersIsWhole) {
  constexpr size_t kLong = 5'000'000;
  Manners manners;
  manners.eof = EndsAfter(1);
  manners.get_rows = [&](const Arguments&) { return Portion({std::string(kLong, 'a') + "库"}, 0); };
  const std::string texts = Read(manners);
  EXPECT_EQ(texts.size(), kLong + std::string("库|").size());
  EXPECT_TRUE(texts.ends_with("a库|"));
}

TEST_F(AdoMisconduct, ARowOfErrorsAndNothingIsEmpty) {
  Manners manners;
  manners.eof = EndsAfter(1);
  manners.get_rows = [](const Arguments&) {
    Variant portion = Portion({"a", "b", "c", "d"}, 0);
    auto* cells = static_cast<VARIANT*>(portion.get().parray->pvData);
    for (int cell = 0; cell < 3; ++cell) VariantClear(&cells[cell]);
    cells[1].vt = VT_NULL;
    cells[2].vt = VT_ERROR;
    cells[2].scode = DISP_E_PARAMNOTFOUND;
    return portion;
  };
  EXPECT_EQ(Read(manners), "|||d|");
}

}  // namespace
}  // namespace stockbook::com
