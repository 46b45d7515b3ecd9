// SPDX-License-Identifier: MIT
// The control's side of what the user does to its grid.
#include "control/stockbook.h"
#include "interaction/grid_handlers.h"

namespace stockbook::control {

class Stockbook::HandlerSteps : public interaction::HandlerSteps {
 public:
  explicit HandlerSteps(Stockbook& control) : control_(control) {}

  int64_t RecordCount() const override { return control_.record_count_; }
  int32_t BillID(int row) const override { return control_.BillID(row); }
  int32_t RecID(int row) const override { return control_.Fields().Get(fields::RecID, row); }
  std::string DescribeRow(int row) const override { return control_.Fields().IssueSource(row); }
  std::string OutlineColKey() const override { return control_.outline_col_key_; }
  const grid::HiddenKeys& HiddenKeys() const override { return control_.hidden_keys_; }
  platform::Colour BackColorHot() const override { return control_.back_color_hot_; }
  platform::Colour ForeColorHot() const override { return control_.fore_color_hot_; }

  void StoreRowHeight(interaction::ResizedRow kind, int twips) override {
    const auto height = static_cast<float>(twips);
    switch (kind) {
      case interaction::ResizedRow::kCaption:
        control_.SetRowHeightTitle(height);
        break;
      case interaction::ResizedRow::kNode:
        control_.SetRowHeightSum(height);
        break;
      case interaction::ResizedRow::kLine:
        control_.SetRowHeight(height);
        break;
    }
  }

  void ApplyLayout() override { control_.FormatGrid(); }
  void RefreshProductNames() override { control_.RefreshProductNames(); }

 private:
  Stockbook& control_;
};

void Stockbook::WatchGrid() {
  handler_steps_ = std::make_unique<HandlerSteps>(*this);
  handlers_ = std::make_unique<interaction::GridHandlers>(
      interaction::GridHandlers::Ports{fg_, menu_, clipboard_, text_metrics_}, events_, *handler_steps_);
  fg_.SetObserver(handlers_.get());
}

Stockbook::~Stockbook() { fg_.SetObserver(nullptr); }

void Stockbook::ForgetHotRow() { handlers_->ForgetHotRow(); }

void Stockbook::Prompt(const std::string& Msg) { events_.Notify(Msg); }

}  // namespace stockbook::control
