// SPDX-License-Identifier: MIT
#include "com/ado/ado_connection.h"

#include <new>
#include <string>
#include <utility>

#include "com/ado/ado_error.h"
#include "com/ado/ado_recordset.h"
#include "com/ado/connection_text.h"
#include "com/ado/late_bound.h"
#include "com/automation/automation_error.h"

namespace stockbook::com {
namespace {

// What a running statement needs, and keeps even if the host destroys its connection meanwhile.
struct AdoSession {
  explicit AdoSession(ComPtr<IDispatch> object) : connection(std::move(object), classes) {}

  KnownClasses classes;
  LateBound connection;
};

// What a value or an array does that does not convert, as a port says it.
template <typename Body>
auto AsPortErrors(const char* operation, Body body) {
  try {
    return body();
  } catch (const AutomationError& error) {
    throw ErrorOfFailure(operation, {error.code(), error.what()});
  } catch (const std::bad_alloc&) {
    throw ErrorOfFailure(operation, {E_OUTOFMEMORY, {}});
  }
}

class AdoConnection : public platform::Connection {
 public:
  explicit AdoConnection(ComPtr<IDispatch> connection)
      : session_(std::make_shared<AdoSession>(std::move(connection))) {}

  std::string ConnectionString() const override {
    const auto session = session_;
    return AsPortErrors("ConnectionString", [&session] {
      return WithoutPasswords(ToText(session->connection.Call(AdoMember::kConnectionString).get()));
    });
  }

  platform::Recordset Execute(std::string_view statement, int options) override {
    const auto session = session_;
    return AsPortErrors("Execute", [&] {
      LateBound recordset = session->connection.Object(AdoMember::kExecute, session->classes, statement, LeftOut(),
                                                       static_cast<int32_t>(options));
      return ReadRecordset(std::move(recordset), session->classes);
    });
  }

  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return nullptr; }

 private:
  std::shared_ptr<AdoSession> session_;
};

}  // namespace

std::shared_ptr<platform::Connection> OpenAdoConnection(IDispatch* connection) {
  if (connection == nullptr) return nullptr;
  return std::make_shared<AdoConnection>(ComPtr<IDispatch>(connection));
}

}  // namespace stockbook::com
