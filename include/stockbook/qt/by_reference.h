// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QObject>
#include <cstdint>
#include <memory>

#include "stockbook/base/api.h"

namespace stockbook::qt {

// A value that a signal passes by reference. All copies share it, so a value written by a slot reaches the sender
// whatever the kind of connection. A copy may outlive the signal; writing it then affects only the copies.
template <typename Type>
class ByReference {
 public:
  // Shares the value with its copies alone.
  explicit ByReference(Type value) : value_(std::make_shared<Type>(value)) {}

  // Both read and write what all copies share.
  Type Value() const { return *value_; }
  void SetValue(Type value) const { *value_ = value; }

 private:
  std::shared_ptr<Type> value_;
};

// The three types that the control's events need. Scripts and the meta-object system read and write `value`.
class STOCKBOOK_API BooleanReference : public ByReference<bool> {
  Q_GADGET
  Q_PROPERTY(bool value READ Value WRITE SetValue)

 public:
  // False unless given.
  explicit BooleanReference(bool value = false) : ByReference(value) {}
};

// A 16-bit number: a mouse button or the keys held with it.
class STOCKBOOK_API IntegerReference : public ByReference<int16_t> {
  Q_GADGET
  Q_PROPERTY(short value READ Value WRITE SetValue)

 public:
  // 0 unless given.
  explicit IntegerReference(int16_t value = 0) : ByReference(value) {}
};

// A number with fractions: a place in twips.
class STOCKBOOK_API SingleReference : public ByReference<float> {
  Q_GADGET
  Q_PROPERTY(float value READ Value WRITE SetValue)

 public:
  // 0 unless given.
  explicit SingleReference(float value = 0) : ByReference(value) {}
};

}  // namespace stockbook::qt

Q_DECLARE_METATYPE(stockbook::qt::BooleanReference)
Q_DECLARE_METATYPE(stockbook::qt::IntegerReference)
Q_DECLARE_METATYPE(stockbook::qt::SingleReference)
