// SPDX-License-Identifier: MIT
#include "base/column_keys.h"
#include "base/scope_exit.h"
#include "control/stockbook.h"
#include "grid/bill_kinds.h"
#include "interaction/journal_caption.h"
#include "journal/loader.h"

namespace stockbook::control {

namespace keys = base::keys;

// The control's side of a load: what the loader asks for between its own steps.
class Stockbook::LoadSteps : public journal::LoadSteps {
 public:
  LoadSteps(Stockbook& control, int32_t key, int32_t second_key, std::string_view class_code)
      : control_(control), key_(key), second_key_(second_key), class_code_(class_code) {}

  bool IsCancelled() override {
    bool cancel = false;
    control_.events_.CommandExecute("Load", cancel);
    return cancel;
  }

  void StoreArguments() override {
    connection_ = control_.connection_;
    if (key_ >= 0) control_.SetKeyID(key_);
    if (second_key_ >= 0) control_.SetdpID(second_key_);
    if (!class_code_.empty()) control_.keys_.dpCode = class_code_;
    if (control_.keys_.dpCode.empty() && control_.keys_.KeyID >= 1) {
      const interaction::SubjectHeader header(control_.connection_.get(), control_.layout_.journal_type);
      control_.keys_.dpCode = header.SecondKeyClassCode(0, control_.keys_);
    }
    // Arguments that were refused leave the rows, and the hot one hot.
    control_.ForgetHotRow();
  }

  void RefreshCaption() override { control_.RefreshCaption(); }
  std::string Caption() const override { return control_.Caption(); }
  void Prompt(const std::string& message) override { control_.events_.Notify(message); }
  void Process(int indicator) override { control_.events_.Process(static_cast<int16_t>(indicator)); }
  platform::Connection* Connection() const override { return connection_.get(); }
  base::tqJournalTypeContants JournalType() const override { return control_.layout_.journal_type; }
  journal::SubjectKeys Keys() const override { return control_.keys_; }
  void StoreRecordCount(size_t count) override { control_.record_count_ = static_cast<int64_t>(count); }
  void ApplyLayout() override { control_.FormatGrid(); }
  bool IsAccRestricted() const override { return control_.acc_restricted_; }
  int SumRowHeight() const override { return static_cast<int>(control_.row_height_sum_); }

  void DecorateRecords() override {
    grid::BillKinds(control_.fg_, control_.pictures_, control_.images_, control_.img_mark_, control_.outline_col_key_)
        .DecorateRecords();
  }

  void FinishRows() override {
    control_.events_.AfterLoaded();
    if (ShowsNameParts()) control_.RefreshProductNames();
    control_.ReadRowHeightsBack();
  }

  void CloseLoad() override {
    control_.outline_col_key_ = keys::kBillNo;
    control_.ApplyBackPictures();
  }

 private:
  bool ShowsNameParts() const {
    const auto shown = [&](const char* key) { return !control_.fg_.ColHidden(control_.fg_.ColIndex(key)); };
    const bool shows_model = control_.layout_.journal_type != base::MaterialJournal && shown(keys::kModel);
    return shows_model || shown(keys::kStandard) || shown(keys::kMeasure);
  }

  Stockbook& control_;
  int32_t key_;
  int32_t second_key_;
  std::string class_code_;
  // The load stays with the connection it began with, whatever a listener sets meanwhile.
  std::shared_ptr<platform::Connection> connection_;
};

void Stockbook::RefreshCaption() {
  const interaction::JournalCaption caption =
      interaction::ComposeCaption(connection_.get(), layout_.journal_type, keys_, subject_, layout_.titles);
  c1e_header_.picture = images_.Find(caption.picture_key);
  SetCaption(caption.text);
}

bool Stockbook::Load(int32_t rKeyID, int32_t rdpID, std::string_view rdpCode) {
  if (loading_) return false;
  LoadSteps steps(*this, rKeyID, rdpID, rdpCode);
  loading_ = true;
  const base::ScopeExit loaded([this] { loading_ = false; });
  return journal::Loader(fg_, steps).Load();
}

}  // namespace stockbook::control
