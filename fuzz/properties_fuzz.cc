// SPDX-License-Identifier: MIT
// Saved properties of any value are read or refused; what was read is written and read again unchanged.
#include "fuzzed_bytes.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "support/fake_surroundings.h"
#include "support/memory_bag.h"

namespace stockbook::fuzz {
namespace {

// Answers every key with a value made of the next bytes, of any type or that of the fallback, or fails.
class HostileBag : public platform::PropertyBag {
 public:
  explicit HostileBag(FuzzedBytes& bytes) : bytes_(bytes) {}

  platform::BagValue Read(std::string_view /*key*/, const platform::BagValue& fallback) override {
    switch (bytes_.Take<uint8_t>() % 16) {
      case 0:
        return bytes_.Take<int16_t>();
      case 1:
        return bytes_.Take<int32_t>();
      case 2:
        return testing::MakePicture("any");
      case 3:
        return platform::PictureRef();
      case 4:
        throw platform::Error("read", "no such value");
      default:
        return OfTheKindOf(fallback);
    }
  }
  void Write(std::string_view, const platform::BagValue&) override {}

 private:
  platform::BagValue OfTheKindOf(const platform::BagValue& fallback) {
    if (std::holds_alternative<int16_t>(fallback)) return bytes_.Take<int16_t>();
    if (std::holds_alternative<int32_t>(fallback)) return bytes_.Take<int32_t>();
    return testing::MakePicture("one");
  }

  FuzzedBytes& bytes_;
};

// Numbers as they are, pictures by whether there is one.
std::string Texts(const testing::MemoryBag& bag) {
  std::string texts;
  for (const auto& [key, value] : bag.entries()) {
    const auto* picture = std::get_if<platform::PictureRef>(&value);
    texts +=
        key + "=" + (picture == nullptr ? std::to_string(testing::NumberOf(value)) : testing::NameOf(*picture)) + "\n";
  }
  return texts;
}

void ReadAndWrite(FuzzedBytes bytes) {
  testing::ControlOverFakes first;
  HostileBag hostile(bytes);
  while (!bytes.IsEmpty()) {
    try {
      first.control->ReadProperties(hostile);
    } catch (const platform::Error&) {
    }
    Require(first.fg.CheckInvariants(), "the sheet is whole");
  }
  testing::MemoryBag saved;
  first.control->WriteProperties(saved);
  testing::ControlOverFakes second;
  second.control->ReadProperties(saved);
  testing::MemoryBag again;
  second.control->WriteProperties(again);
  Require(Texts(saved) == Texts(again), "what was saved is read", Texts(saved) + "and again\n" + Texts(again));
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  stockbook::fuzz::ReadAndWrite(stockbook::fuzz::FuzzedBytes(data, size));
  return 0;
}
