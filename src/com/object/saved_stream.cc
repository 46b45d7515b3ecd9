// SPDX-License-Identifier: MIT
#include "com/object/saved_stream.h"

#include <ole2.h>
#include <olectl.h>

#include <array>
#include <cstring>
#include <string>
#include <type_traits>

#include "com/automation/automation_error.h"

namespace stockbook::com {
namespace {

constexpr uint32_t kSavedMark = 0x424B5453;  // "STKB"
constexpr uint32_t kSavedVersion = 1;
constexpr uint32_t kMostBytes = 256u << 20;  // pictures of a form; more is damage

enum class SavedType : uint8_t { kShort = 1, kLong = 2, kPicture = 3 };

struct SavedHead {
  uint32_t mark = kSavedMark;
  uint32_t version = kSavedVersion;
  uint32_t size = 0;
  uint32_t sum = 0;
};

[[noreturn]] void FailDamaged() {
  throw AutomationError(CTL_E_INVALIDFILEFORMAT, "保存的外观设置已损坏，或者不是本控件保存的：没有读取任何内容。");
}

// FNV-1a, against accidents.
uint32_t SumOf(const std::string& bytes) {
  uint32_t sum = 2166136261u;
  for (const char byte : bytes) sum = (sum ^ static_cast<uint8_t>(byte)) * 16777619u;
  return sum;
}

void WriteAll(IStream& stream, const void* bytes, size_t size) {
  ULONG written = 0;
  Expect(stream.Write(bytes, static_cast<ULONG>(size), &written));
  if (written != size) throw AutomationError(STG_E_MEDIUMFULL, "外观设置无法保存：存储空间已满。");
}

void ReadAll(IStream& stream, void* bytes, size_t size) {
  ULONG read = 0;
  Expect(stream.Read(bytes, static_cast<ULONG>(size), &read));
  if (read != size) FailDamaged();
}

template <typename Number>
void AppendRaw(std::string& bytes, Number number) {
  char raw[sizeof number];
  std::memcpy(raw, &number, sizeof number);
  bytes.append(raw, sizeof raw);
}

// What pictures write of themselves, as bytes.
std::string BytesOf(const ComPtr<IPictureDisp>& object) {
  const auto persist = object.As<IPersistStream>();
  if (!persist) return {};
  ComPtr<IStream> stream;
  Expect(CreateStreamOnHGlobal(nullptr, TRUE, stream.PutTyped()));
  Expect(persist->Save(stream.get(), FALSE));
  STATSTG facts{};
  Expect(stream->Stat(&facts, STATFLAG_NONAME));
  Expect(stream->Seek({}, STREAM_SEEK_SET, nullptr));
  std::string bytes(static_cast<size_t>(facts.cbSize.QuadPart), '\0');
  ReadAll(*stream, bytes.data(), bytes.size());
  return bytes;
}

platform::PictureRef PictureFrom(const std::string& bytes, PictureObjects& pictures) {
  if (bytes.empty()) return nullptr;
  ComPtr<IStream> stream;
  Expect(CreateStreamOnHGlobal(nullptr, TRUE, stream.PutTyped()));
  WriteAll(*stream, bytes.data(), bytes.size());
  Expect(stream->Seek({}, STREAM_SEEK_SET, nullptr));
  ComPtr<IPictureDisp> object;
  if (FAILED(OleLoadPicture(stream.get(), 0, TRUE, IID_IPictureDisp, object.Put()))) FailDamaged();
  return pictures.PictureOf(object.get());
}

// Takes values off the front of the bytes; too few are damage.
class SavedBytes {
 public:
  explicit SavedBytes(const std::string& bytes) : left_(bytes) {}

  bool AtEnd() const { return left_.empty(); }
  std::string Text(size_t size) {
    if (size > left_.size()) FailDamaged();
    std::string text(left_.substr(0, size));
    left_.remove_prefix(size);
    return text;
  }
  template <typename Number>
  Number Take() {
    const std::string raw = Text(sizeof(Number));
    Number number{};
    std::memcpy(&number, raw.data(), sizeof number);
    return number;
  }

 private:
  std::string_view left_;
};

platform::BagValue ValueFrom(SavedBytes& bytes, PictureObjects& pictures) {
  switch (bytes.Take<SavedType>()) {
    case SavedType::kShort:
      return bytes.Take<int16_t>();
    case SavedType::kLong:
      return bytes.Take<int32_t>();
    case SavedType::kPicture:
      return PictureFrom(bytes.Text(bytes.Take<uint32_t>()), pictures);
  }
  FailDamaged();
}

void AppendValue(std::string& bytes, const platform::BagValue& value, PictureObjects& pictures) {
  if (const auto* number = std::get_if<int16_t>(&value)) {
    AppendRaw(bytes, SavedType::kShort);
    AppendRaw(bytes, *number);
  } else if (const auto* long_number = std::get_if<int32_t>(&value)) {
    AppendRaw(bytes, SavedType::kLong);
    AppendRaw(bytes, *long_number);
  } else {
    const std::string picture = BytesOf(pictures.ObjectOf(std::get<platform::PictureRef>(value)));
    AppendRaw(bytes, SavedType::kPicture);
    AppendRaw(bytes, static_cast<uint32_t>(picture.size()));
    bytes += picture;
  }
}

}  // namespace

MemoryBag ReadSaved(IStream& stream, PictureObjects& pictures) {
  SavedHead head;
  ReadAll(stream, &head, sizeof head);
  if (head.mark != kSavedMark || head.size > kMostBytes) FailDamaged();
  if (head.version != kSavedVersion)
    throw AutomationError(CTL_E_INVALIDFILEFORMAT, "外观设置是由更新的版本保存的：请安装新版本的控件。");
  std::string bytes(head.size, '\0');
  ReadAll(stream, bytes.data(), bytes.size());
  if (SumOf(bytes) != head.sum) FailDamaged();
  MemoryBag bag;
  SavedBytes left(bytes);
  while (!left.AtEnd()) {
    const std::string key = left.Text(left.Take<uint8_t>());
    bag.Write(key, ValueFrom(left, pictures));
  }
  return bag;
}

void WriteSaved(const MemoryBag& bag, IStream& stream, PictureObjects& pictures) {
  std::string bytes;
  for (const auto& [key, value] : bag.entries()) {
    AppendRaw(bytes, static_cast<uint8_t>(key.size()));
    bytes += key;
    AppendValue(bytes, value, pictures);
  }
  SavedHead head;
  head.size = static_cast<uint32_t>(bytes.size());
  head.sum = SumOf(bytes);
  WriteAll(stream, &head, sizeof head);
  WriteAll(stream, bytes.data(), bytes.size());
}

}  // namespace stockbook::com
