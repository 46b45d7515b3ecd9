// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "com/bag_double.h"
#include "com/late.h"
#include "com/object/saved_stream.h"

namespace stockbook::com {
namespace {

using testing::BagDouble;
using testing::Late;
using testing::NewControl;
using testing::NewPicture;

struct SavedKey {
  const char* key;
  VARTYPE type;
};

constexpr SavedKey kSavedKeys[] = {
    {"BorderWidth", VT_I2},
    {"ChildSpacing", VT_I2},
    {"BorderColor", VT_I4},
    {"NodeClosedPicture", VT_UNKNOWN},
    {"NodeOpenPicture", VT_UNKNOWN},
    {"BillPicture", VT_UNKNOWN},
    {"BillAuditedPicture", VT_UNKNOWN},
    {"RevPicture", VT_UNKNOWN},
    {"RevAuditedPicture", VT_UNKNOWN},
    {"IssPicture", VT_UNKNOWN},
    {"IssAuditedPicture", VT_UNKNOWN},
    {"ShiftPicture", VT_UNKNOWN},
    {"ShiftAuditedPicture", VT_UNKNOWN},
    {"SheetBorderColor", VT_I4},
    {"BackColor", VT_I4},
    {"BackColorBkg", VT_I4},
    {"BackColorFixed", VT_I4},
    {"BackColorFrozen", VT_I4},
    {"BackColorSel", VT_I4},
    {"ForeColor", VT_I4},
    {"ForeColorFixed", VT_I4},
    {"ForeColorFrozen", VT_I4},
    {"ForeColorSel", VT_I4},
    {"GridColor", VT_I4},
    {"GridColorFixed", VT_I4},
    {"GridLines", VT_I4},
    {"GridLinesFixed", VT_I4},
    {"OutlineBar", VT_I4},
    {"ScrollBars", VT_I4},
    {"TitleBackPicture", VT_UNKNOWN},
    {"MarkBackPicture", VT_UNKNOWN},
    {"RowHeightMin", VT_I4},
    {"RowHeightMax", VT_I4},
    {"BackColorHot", VT_I4},
    {"ForeColorHot", VT_I4},
};

HRESULT LoadBag(_Stockbook* control, BagDouble& bag) {
  return ComPtr<IUnknown>(control).As<IPersistPropertyBag>()->Load(&bag, nullptr);
}

HRESULT SaveBag(_Stockbook* control, BagDouble& bag) {
  return ComPtr<IUnknown>(control).As<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE);
}

// Another value for every property than a new control has.
void ChangeEverything(_Stockbook* control) {
  const Late late(control);
  int number = 2;
  for (const SavedKey& saved : kSavedKeys) {
    const std::string key = saved.key;
    if (saved.type == VT_UNKNOWN) {
      late.PutRef(saved.key, NewPicture(number % 20 + 4).get());
    } else if (key == "GridLines" || key == "GridLinesFixed" || key == "OutlineBar" || key == "ScrollBars") {
      late.Put(saved.key, 2);
    } else {
      late.Put(saved.key, saved.type == VT_I2 ? number : 0x100 + number);
    }
    ++number;
  }
}

void ExpectSameProperties(_Stockbook* left, _Stockbook* right) {
  for (const SavedKey& saved : kSavedKeys) {
    SCOPED_TRACE(saved.key);
    const auto one = Late(left).Get(saved.key);
    const auto other = Late(right).Get(saved.key);
    if (saved.type != VT_UNKNOWN) {
      EXPECT_EQ(one.Double(), other.Double());
      continue;
    }
    ASSERT_TRUE(one.Object());
    ASSERT_TRUE(other.Object());
    OLE_XSIZE_HIMETRIC widths[2] = {};
    one.Object().As<IPicture>()->get_Width(&widths[0]);
    other.Object().As<IPicture>()->get_Width(&widths[1]);
    EXPECT_EQ(widths[0], widths[1]);
  }
}

TEST(Persistence, WritesAllKeysInTheirOrderWithTheirTypes) {
  const auto control = NewControl();
  BagDouble bag;
  EXPECT_EQ(SaveBag(control.get(), bag), S_OK);
  ASSERT_EQ(bag.asked.size(), std::size(kSavedKeys));
  for (size_t index = 0; index < std::size(kSavedKeys); ++index) {
    EXPECT_EQ(bag.asked[index], kSavedKeys[index].key);
    const VARTYPE type =
        kSavedKeys[index].type == VT_UNKNOWN ? static_cast<VARTYPE>(VT_DISPATCH) : kSavedKeys[index].type;
    EXPECT_EQ(bag.types[index], type) << kSavedKeys[index].key;
  }
  EXPECT_EQ(bag.values["BackColorHot"].get().lVal, 0x00E2D2C7);
  EXPECT_EQ(bag.values["TitleBackPicture"].get().pdispVal, nullptr) << "an empty picture is written as nothing";
  EXPECT_EQ(bag.references(), 1u);
  BagDouble again;
  EXPECT_EQ(SaveBag(control.get(), again), S_OK);
  EXPECT_EQ(again.asked, bag.asked);
}

TEST(Persistence, ReadsWhatItWroteThroughTheBag) {
  const auto control = NewControl();
  ChangeEverything(control.get());
  BagDouble bag;
  ASSERT_EQ(SaveBag(control.get(), bag), S_OK);
  const auto other = NewControl();
  bag.asked.clear();
  bag.types.clear();
  ASSERT_EQ(LoadBag(other.get(), bag), S_OK);
  ASSERT_EQ(bag.asked.size(), std::size(kSavedKeys));
  for (size_t index = 0; index < std::size(kSavedKeys); ++index) {
    EXPECT_EQ(bag.asked[index], kSavedKeys[index].key);
    EXPECT_EQ(bag.types[index], kSavedKeys[index].type);
  }
  ExpectSameProperties(control.get(), other.get());
  // The bag's own picture objects, at that.
  EXPECT_EQ(Late(other.get()).Get("BillPicture").Object().get(), bag.values["BillPicture"].get().pdispVal);
}

TEST(Persistence, LeavesEverythingAsItIsWithAnEmptyBag) {
  const auto control = NewControl();
  const auto untouched = NewControl();
  ChangeEverything(control.get());
  ChangeEverything(untouched.get());
  BagDouble empty;
  EXPECT_EQ(LoadBag(control.get(), empty), S_OK);
  ExpectSameProperties(control.get(), untouched.get());
}

TEST(Persistence, DerivesTheBorderOfTheBodyWhenABagIsRead) {
  for (const auto& [desk, body] : {std::pair<int, int>{0, 1}, {2, 0}, {-1, 1}}) {
    const auto control = NewControl();
    BagDouble bag;
    bag.values["BorderWidth"] = Variant(static_cast<int16_t>(desk));
    EXPECT_EQ(LoadBag(control.get(), bag), S_OK);
    const Late grid(Late(control.get()).Get("Grid").Object().get());
    EXPECT_EQ(Late(grid.Get("C1EBody").Object().get()).Get("BorderWidth").Long(), body);
    EXPECT_EQ(Late(grid.Get("C1EDesk").Object().get()).Get("BorderWidth").Long(), desk);
  }
}

TEST(Persistence, PassesAFailureOfTheBagOnAtEveryKey) {
  const auto full = NewControl();
  ChangeEverything(full.get());
  for (size_t at = 0; at < std::size(kSavedKeys); ++at) {
    SCOPED_TRACE(kSavedKeys[at].key);
    BagDouble bag;
    bag.fails_at = static_cast<int>(at);
    EXPECT_EQ(SaveBag(full.get(), bag), bag.failure);
    EXPECT_EQ(bag.asked.size(), at + 1);
    EXPECT_EQ(bag.values.size(), at);
    BagDouble source;
    ASSERT_EQ(SaveBag(full.get(), source), S_OK);
    source.asked.clear();
    source.fails_at = static_cast<int>(at);
    const auto control = NewControl();
    const auto fresh = NewControl();
    EXPECT_EQ(LoadBag(control.get(), source), source.failure);
    EXPECT_NE(testing::LastDescription(), "");
    for (size_t index = 0; index < std::size(kSavedKeys); ++index) {
      if (kSavedKeys[index].type == VT_UNKNOWN) continue;
      const char* key = kSavedKeys[index].key;
      const auto expected = Late(index < at ? full.get() : fresh.get()).Get(key).Double();
      EXPECT_EQ(Late(control.get()).Get(key).Double(), expected) << key;
    }
  }
}

TEST(Persistence, ConvertsWhatABagKeepsAsTextAndRefusesWhatDoesNotConvert) {
  const auto control = NewControl();
  BagDouble bag;
  bag.values["BorderWidth"] = Variant(std::string_view("7"));
  bag.values["BackColor"] = Variant(1234.0);
  EXPECT_EQ(LoadBag(control.get(), bag), S_OK);
  EXPECT_EQ(Late(control.get()).Get("BorderWidth").Long(), 7);
  EXPECT_EQ(Late(control.get()).Get("BackColor").Long(), 1234);
  bag.values["BorderWidth"] = Variant(70000.0);
  EXPECT_EQ(LoadBag(control.get(), bag), CTL_E_OVERFLOW);
  bag.values["BorderWidth"] = Variant(std::string_view("breit"));
  EXPECT_EQ(LoadBag(control.get(), bag), static_cast<HRESULT>(0x800A000D));
  bag.values.clear();
  bag.values["BillPicture"] = Variant(static_cast<IDispatch*>(control.get()));
  EXPECT_EQ(LoadBag(control.get(), bag), CTL_E_INVALIDPICTURE);
}

TEST(Persistence, KeepsANumberThatABagHasNothingFor) {
  const auto control = NewControl();
  EXPECT_TRUE(Late(control.get()).Put("BackColor", 0x123456).Succeeded());
  BagDouble bag;
  bag.values["BackColor"] = Variant();
  bag.values["BillPicture"] = Variant();
  EXPECT_EQ(LoadBag(control.get(), bag), S_OK);
  EXPECT_EQ(Late(control.get()).Get("BackColor").Long(), 0x123456);
  EXPECT_FALSE(Late(control.get()).Get("BillPicture").Object()) << "no picture is one that can be kept";
}

TEST(Persistence, KnowsWhetherThereIsSomethingToSave) {
  const auto control = NewControl();
  const auto stream_side = control.As<IPersistStreamInit>();
  EXPECT_EQ(stream_side->InitNew(), S_OK);
  EXPECT_EQ(stream_side->IsDirty(), S_FALSE);
  Late(control.get()).Put("Caption", "x");
  EXPECT_EQ(stream_side->IsDirty(), S_FALSE) << "the caption is not saved";
  Late(control.get()).Put("BackColor", 5);
  EXPECT_EQ(stream_side->IsDirty(), S_OK);
  BagDouble bag;
  EXPECT_EQ(control.As<IPersistPropertyBag>()->Save(&bag, FALSE, TRUE), S_OK);
  EXPECT_EQ(stream_side->IsDirty(), S_OK);
  EXPECT_EQ(SaveBag(control.get(), bag), S_OK);
  EXPECT_EQ(stream_side->IsDirty(), S_FALSE);
  Late(control.get()).Put("BackColor", 6);
  EXPECT_EQ(LoadBag(control.get(), bag), S_OK);
  EXPECT_EQ(stream_side->IsDirty(), S_FALSE);
}

ComPtr<IStream> NewStream() {
  ComPtr<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.PutTyped());
  return stream;
}

void Rewind(IStream& stream) { stream.Seek({}, STREAM_SEEK_SET, nullptr); }

TEST(Persistence, ReadsWhatItWroteThroughAStream) {
  const auto control = NewControl();
  ChangeEverything(control.get());
  const auto stream = NewStream();
  ASSERT_EQ(control.As<IPersistStreamInit>()->Save(stream.get(), TRUE), S_OK);
  // What follows in the host's stream is the host's.
  const char after[] = "host";
  stream->Write(after, sizeof after, nullptr);
  Rewind(*stream.get());
  const auto other = NewControl();
  ASSERT_EQ(other.As<IPersistStreamInit>()->Load(stream.get()), S_OK);
  ExpectSameProperties(control.get(), other.get());
  char left[sizeof after] = {};
  EXPECT_EQ(stream->Read(left, sizeof left, nullptr), S_OK);
  EXPECT_STREQ(left, after);
  EXPECT_EQ(control.As<IPersistStreamInit>()->Load(nullptr), E_POINTER);
  EXPECT_EQ(control.As<IPersistStreamInit>()->Save(nullptr, TRUE), E_POINTER);
}

TEST(Persistence, RefusesADamagedStreamWithoutHalfAnEffect) {
  const auto control = NewControl();
  ChangeEverything(control.get());
  const auto stream = NewStream();
  ASSERT_EQ(control.As<IPersistStreamInit>()->Save(stream.get(), TRUE), S_OK);
  STATSTG facts{};
  stream->Stat(&facts, STATFLAG_NONAME);
  const auto size = static_cast<size_t>(facts.cbSize.QuadPart);
  std::string bytes(size, '\0');
  Rewind(*stream.get());
  stream->Read(bytes.data(), static_cast<ULONG>(size), nullptr);
  const auto other = NewControl();
  const auto fresh = NewControl();
  const auto expect_refused = [&](const std::string& damaged) {
    const auto broken = NewStream();
    broken->Write(damaged.data(), static_cast<ULONG>(damaged.size()), nullptr);
    Rewind(*broken.get());
    EXPECT_TRUE(FAILED(other.As<IPersistStreamInit>()->Load(broken.get())));
    EXPECT_EQ(Late(other.get()).Get("BorderWidth").Long(), Late(fresh.get()).Get("BorderWidth").Long());
    EXPECT_EQ(Late(other.get()).Get("ForeColorHot").Long(), Late(fresh.get()).Get("ForeColorHot").Long());
  };
  Rewind(*stream);
  EXPECT_EQ(NewControl().As<IPersistStreamInit>()->Load(stream.get()), S_OK) << "undamaged";
  for (size_t at = 0; at < size; at += at < 300 ? 1 : 97) {
    SCOPED_TRACE(at);
    std::string damaged = bytes;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x41);
    expect_refused(damaged);
    expect_refused(bytes.substr(0, at));
  }
}

TEST(Persistence, TakesBackWhatAStreamHadSetBeforeAValueOfAWrongType) {
  const auto control = NewControl();
  EXPECT_TRUE(Late(control.get()).Put("BorderWidth", 3).Succeeded());
  MemoryBag bag;
  bag.Write("BorderWidth", int16_t{9});
  bag.Write("GridColor", int16_t{9});
  const auto stream = NewStream();
  PictureObjects pictures;
  WriteSaved(bag, *stream, pictures);
  Rewind(*stream);
  EXPECT_EQ(control.As<IPersistStreamInit>()->Load(stream.get()), static_cast<HRESULT>(0x800A000D));
  EXPECT_EQ(Late(control.get()).Get("BorderWidth").Long(), 3);
}

ComPtr<IStorage> NewStorage() {
  ComPtr<ILockBytes> bytes;
  CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.PutTyped());
  ComPtr<IStorage> storage;
  StgCreateDocfileOnILockBytes(bytes.get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.PutTyped());
  return storage;
}

TEST(Persistence, ReadsWhatItWroteThroughAStorage) {
  const auto control = NewControl();
  ChangeEverything(control.get());
  const auto storage = NewStorage();
  ASSERT_TRUE(storage);
  const auto side = control.As<IPersistStorage>();
  EXPECT_EQ(side->InitNew(storage.get()), S_OK);
  EXPECT_EQ(side->IsDirty(), S_OK);
  ASSERT_EQ(side->Save(storage.get(), TRUE), S_OK);
  EXPECT_EQ(side->IsDirty(), S_OK) << "saved, but not yet told that it was complete";
  EXPECT_EQ(side->SaveCompleted(nullptr), S_OK);
  EXPECT_EQ(side->IsDirty(), S_FALSE);
  EXPECT_EQ(side->HandsOffStorage(), S_OK);
  const auto other = NewControl();
  ASSERT_EQ(other.As<IPersistStorage>()->Load(storage.get()), S_OK);
  ExpectSameProperties(control.get(), other.get());
  EXPECT_TRUE(FAILED(other.As<IPersistStorage>()->Load(NewStorage().get()))) << "nothing was saved there";
  EXPECT_EQ(side->Load(nullptr), E_POINTER);
  EXPECT_EQ(side->Save(nullptr, TRUE), E_POINTER);
  CLSID id{};
  EXPECT_EQ(side->GetClassID(&id), S_OK);
  EXPECT_EQ(id, CLSID_Stockbook);
  EXPECT_EQ(side->GetClassID(nullptr), E_POINTER);
}

}  // namespace
}  // namespace stockbook::com
