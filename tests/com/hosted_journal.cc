// SPDX-License-Identifier: MIT
#include "com/hosted_journal.h"

#include <gtest/gtest.h>

#include "support/small_journal.h"

namespace stockbook::testing {

HostedJournal::HostedJournal(State state)
    : connection_(MakeAdoDouble(log_, std::shared_ptr<platform::Connection>(SmallJournal()))), control_(NewControl()) {
  EXPECT_EQ(control_->putref_Conn(connection_.get()), S_OK);
  if (state == State::kLoaded) {
    EXPECT_TRUE(Load());
  }
}

bool HostedJournal::Load() const {
  VARIANT_BOOL loaded = VARIANT_FALSE;
  return SUCCEEDED(control_->Load(1, -1, nullptr, &loaded)) && loaded != VARIANT_FALSE;
}

Late HostedJournal::grid() const { return Late(late().Get("Grid").Object().get()); }

}  // namespace stockbook::testing
