// SPDX-License-Identifier: MIT
#pragma once

#include "com/automation/variant.h"

#include "com/automation/automation_error.h"
#include "com/grid/control_link.h"

namespace stockbook::com {

// The frames around the grid, by the names they have.
enum class FrameName { kDesk, kBody, kHeader };

// One late-bound call of a member: what it is called of, and its arguments in the order in which the host writes them;
// of a written property the value is the last.
class MemberCall {
 public:
  MemberCall(ControlLinkRef link, FrameName frame, const DISPPARAMS& arguments)
      : link_(std::move(link)), frame_(frame), arguments_(arguments) {}

  sheet::GridSheet& grid() const { return *link_->grid; }
  control::Stockbook& control() const { return *link_->control; }
  PictureObjects& pictures() const { return *link_->pictures; }
  const ControlLinkRef& link() const { return link_; }
  FrameName frame() const { return frame_; }

  UINT Count() const { return arguments_.cArgs; }
  VARIANT& operator[](UINT index) const { return arguments_.rgvarg[arguments_.cArgs - 1 - index]; }
  VARIANT& Value() const { return arguments_.rgvarg[0]; }
  bool Has(UINT index) const { return index < Count() && !IsMissing((*this)[index]); }

  // The argument as a row or column that exists; throws AutomationError with what there is.
  int Row(UINT index) const;
  int Column(UINT index) const;
  // The value of a written property as a row or column.
  int RowValue() const { return Row(Count() - 1); }
  int ColumnValue() const { return Column(Count() - 1); }
  // A value that is one of the codes from 0 to `most`, which the member named is about.
  int Code(const char* member, int most) const;

 private:
  ControlLinkRef link_;
  FrameName frame_;
  const DISPPARAMS& arguments_;
};

// A member of such an object. Names are compared without regard to upper and lower case.
struct LateMember {
  const wchar_t* name;
  UINT least_arguments;  // of the reader or method; a writer takes the value beside as many as the reader
  UINT most_arguments;
  Variant (*read)(const MemberCall& call);  // also what a method does; null where it cannot be read
  void (*write)(const MemberCall& call);    // null where it cannot be written
};

}  // namespace stockbook::com
