// SPDX-License-Identifier: MIT
#include "com/ado_double/ado_double.h"

#include <oleauto.h>

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using com::ComPtr;
using com::Variant;
using Arguments = std::vector<const VARIANT*>;

constexpr GUID kRecordsetType = {0x6C0F3A51, 0x52A8, 0x4B37, {0x9C, 0x1D, 0x3E, 0x86, 0x0B, 0x57, 0x11, 0xA1}};
constexpr GUID kFieldsType = {0x6C0F3A52, 0x52A8, 0x4B37, {0x9C, 0x1D, 0x3E, 0x86, 0x0B, 0x57, 0x11, 0xA2}};
constexpr GUID kFieldType = {0x6C0F3A53, 0x52A8, 0x4B37, {0x9C, 0x1D, 0x3E, 0x86, 0x0B, 0x57, 0x11, 0xA3}};
constexpr GUID kConnectionType = {0x6C0F3A54, 0x52A8, 0x4B37, {0x9C, 0x1D, 0x3E, 0x86, 0x0B, 0x57, 0x11, 0xA4}};

constexpr auto kNoRecord = static_cast<HRESULT>(0x800A0BCD);
constexpr auto kNoItem = static_cast<HRESULT>(0x800A0CC1);
constexpr auto kClosed = static_cast<HRESULT>(0x800A0E78);

// The rows and where the recordset stands in them.
struct Cursor {
  std::shared_ptr<AdoRows> rows;
  AdoManner manner;
  AdoLog& log;
  size_t row = 0;
  bool closed = false;
  DISPID next_id = 1;

  std::optional<GUID> Type(const GUID& type) const {
    return manner.type == AdoManner::Type::kNamed ? std::optional(type) : std::nullopt;
  }
  // Objects without a class have ids of their own.
  DISPID FirstId() { return manner.type == AdoManner::Type::kNamed ? 1 : next_id += 100; }
  void RequireOpen() const {
    if (closed) throw AdoFailure{kClosed, "对象关闭时，不允许操作。"};
  }
  void RequireRecord() const {
    RequireOpen();
    if (row >= rows->Count()) throw AdoFailure{kNoRecord, "BOF 或 EOF 中有一个是“真”。"};
    if (manner.dies_at_row && row >= *manner.dies_at_row) throw manner.death;
  }
};

Variant ObjectOf(NamedObject* object) { return Variant(static_cast<IDispatch*>(object)); }

Variant MakeField(const std::shared_ptr<Cursor>& cursor, size_t field) {
  auto* object = new NamedObject(cursor->log, cursor->Type(kFieldType), cursor->FirstId());
  object->Add(L"Name", [=](const Arguments&) { return Variant(std::string_view(cursor->rows->names()[field])); });
  object->Add(L"Type", [=](const Arguments&) {
    return Variant(static_cast<int32_t>(cursor->rows->At(cursor->row, field).get().vt));
  });
  object->Add(L"Value", [=](const Arguments&) {
    cursor->RequireRecord();
    return cursor->rows->At(cursor->row, field);
  });
  return ObjectOf(object);
}

size_t IndexOf(const std::vector<std::string>& names, const VARIANT& asked) {
  size_t index = names.size();
  if (asked.vt == VT_BSTR) {
    const std::string name = com::ToText(asked);
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& candidate) {
      return base::EqualsIgnoringCase(candidate, name);
    });
    index = static_cast<size_t>(found - names.begin());
  } else {
    index = static_cast<size_t>(com::ToLong(asked));
  }
  if (index >= names.size()) throw AdoFailure{kNoItem, "在对应所需名称或序数的集合中，未找到项目。"};
  return index;
}

Variant MakeFields(const std::shared_ptr<Cursor>& cursor) {
  auto* object = new NamedObject(cursor->log, cursor->Type(kFieldsType), cursor->FirstId());
  object->Add(L"Count", [=](const Arguments&) { return Variant(static_cast<int32_t>(cursor->rows->names().size())); });
  object->Add(L"Item", [=](const Arguments& arguments) {
    return MakeField(cursor, IndexOf(cursor->rows->names(), *arguments.at(0)));
  });
  return ObjectOf(object);
}

Variant PortionOf(Cursor& cursor, size_t most) {
  cursor.RequireRecord();
  ++cursor.log.portions;
  if (cursor.manner.meanwhile) cursor.manner.meanwhile();
  if (cursor.manner.instead_of_rows) return cursor.manner.instead_of_rows();
  const size_t fields = cursor.rows->names().size();
  const size_t left = cursor.rows->Count() - cursor.row;
  const size_t count = std::min(most, left);
  if (cursor.manner.dies_at_row && cursor.row + count > *cursor.manner.dies_at_row) throw cursor.manner.death;
  SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(fields), 0}, {static_cast<ULONG>(count), 0}};
  Variant portion;
  portion.get().parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
  portion.get().vt = VT_ARRAY | VT_VARIANT;
  auto* cell = static_cast<VARIANT*>(portion.get().parray->pvData);
  for (size_t row = 0; row < count; ++row, ++cursor.row) {
    for (size_t field = 0; field < fields; ++field) *cell++ = cursor.rows->At(cursor.row, field).Detach();
  }
  return portion;
}

void AddGetRows(NamedObject& object, const std::shared_ptr<Cursor>& cursor) {
  object.Add(L"GetRows", [=](const Arguments& arguments) {
    const int32_t most = arguments.empty() ? -1 : com::ToLong(*arguments[0]);
    return PortionOf(*cursor, most < 0 ? SIZE_MAX : static_cast<size_t>(most));
  });
  object.Add(L"CacheSize", [=](const Arguments& arguments) {
    if (!arguments.empty()) cursor->log.cache_size = com::ToLong(*arguments[0]);
    return Variant(static_cast<int32_t>(cursor->log.cache_size));
  });
}

Variant MakeRecordset(const std::shared_ptr<Cursor>& cursor) {
  auto* object = new NamedObject(cursor->log, cursor->Type(kRecordsetType), cursor->FirstId());
  object->Add(L"EOF", [=](const Arguments&) {
    cursor->RequireOpen();
    return Variant(cursor->row >= cursor->rows->Count());
  });
  object->Add(L"MoveNext", [=](const Arguments&) {
    cursor->RequireRecord();
    ++cursor->log.moves;
    ++cursor->row;
    return Variant();
  });
  object->Add(L"Close", [=](const Arguments&) {
    cursor->RequireOpen();
    ++cursor->log.closed;
    cursor->closed = true;
    return Variant();
  });
  // A cursor that only moves forward does not know.
  object->Add(L"RecordCount", [](const Arguments&) { return Variant(int32_t{-1}); });
  object->Add(L"Fields", [=](const Arguments&) { return MakeFields(cursor); });
  if (cursor->manner.fetch == AdoManner::Fetch::kPortions) AddGetRows(*object, cursor);
  return ObjectOf(object);
}

AdoFailure FailureOf(const platform::Error& error) {
  const auto code = [&error]() -> uint32_t {
    switch (error.kind()) {
      case platform::ErrorKind::kInterrupted:
        return 0x80040E31;
      case platform::ErrorKind::kMemory:
        return 0x8007000E;
      case platform::ErrorKind::kStatement:
        return 0x80040E14;
      default:
        return 0x80004005;
    }
  };
  return {static_cast<HRESULT>(code()), error.what()};
}

}  // namespace

ComPtr<IDispatch> MakeAdoDouble(AdoLog& log, std::string connection_string, RunStatement run, AdoManner manner) {
  const bool is_named = manner.type == AdoManner::Type::kNamed;
  auto* object = new NamedObject(log, is_named ? std::optional(kConnectionType) : std::nullopt);
  object->Add(L"ConnectionString",
              [text = std::move(connection_string)](const Arguments&) { return Variant(std::string_view(text)); });
  object->Add(L"Execute", [&log, run = std::move(run), manner](const Arguments& arguments) {
    if (arguments.size() != 3 || !com::IsMissing(*arguments[1])) throw AdoFailure{450, "参数不正确。"};
    ++log.statements;
    log.last_statement = com::ToText(*arguments[0]);
    log.last_options = com::ToLong(*arguments[2]);
    if (manner.meanwhile) manner.meanwhile();
    return MakeRecordset(std::make_shared<Cursor>(Cursor{run(log.last_statement), manner, log}));
  });
  return ComPtr<IDispatch>(object);
}

ComPtr<IDispatch> MakeAdoDouble(AdoLog& log, std::shared_ptr<platform::Connection> connection, AdoManner manner) {
  const std::string text = connection->ConnectionString();
  const auto run = [connection](const std::string& statement) -> std::shared_ptr<AdoRows> {
    try {
      return std::make_shared<ColumnRows>(connection->Execute(statement).TakeAll());
    } catch (const platform::Error& error) {
      throw FailureOf(error);
    }
  };
  return MakeAdoDouble(log, text, run, std::move(manner));
}

}  // namespace stockbook::testing
