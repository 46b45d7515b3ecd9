// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "grid/hidden_keys.h"
#include "grid/layout_settings.h"
#include "grid/pictures.h"
#include "interaction/events.h"
#include "interaction/grid_handlers.h"
#include "interaction/journal_caption.h"
#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "journal/subjects.h"
#include "stockbook/control/container.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/images.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/property_bag.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::control {

// What is behind the control's interface: its state, and what several of its members do. Only the control has one.
struct Stockbook::State {
  class JournalLoad;
  class SavedProperties;
  class Watched;

  State(Stockbook& of, const Surroundings& surroundings);
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  // A second key as it is stored; throws platform::Error where it has no room.
  static int16_t NarrowedKey(int32_t id);
  journal::SecondUnit SecondUnit() const;
  // Raises Notify.
  journal::Tell Teller();
  void WatchGrid();
  // What the host hears of a row: where its stock came from, or why that could not be read.
  std::string DescribeSource(int row) const;
  void StoreRowHeight(interaction::ResizedRow kind, int twips);
  void ForgetHotRow() { handlers->hot_row().Forget(); }
  // Raises AfterFormatted.
  void FormatGrid();
  void SizeRows();
  // Writes the saved property with that reader, and tells the site.
  template <typename Type>
  void Change(Type (Stockbook::*property)() const, std::type_identity_t<Type> value);
  void ShowCaption(const interaction::JournalCaption& caption);
  void RefreshProductNames();
  void ReadRowHeightsBack();
  void ApplyBackPictures();

  // What the journal's properties are read from, but for those of the grid.
  auto JournalValues() const {
    return std::tie(connection, layout, hidden_keys, keys, subject, c1e_header.caption, outline_col_key,
                    acc_restrict_text, allow_view, allow_print, row_height, row_height_title, row_height_sum);
  }

  Stockbook& control;
  platform::Grid& fg;
  platform::Grid& fg1;
  const platform::TextMetrics& text_metrics;
  const platform::Images& images;
  platform::Menu& menu;
  platform::Clipboard& clipboard;
  platform::ControlSite& site;
  interaction::Events events;

  std::shared_ptr<platform::Connection> connection;
  grid::LayoutSettings layout;
  grid::HiddenKeys hidden_keys;
  grid::Pictures pictures;
  journal::SubjectKeys keys;
  journal::SubjectTexts subject;
  Container c1e_desk;
  Container c1e_body;
  Container c1e_header;
  platform::PictureRef img_mark;
  std::string outline_col_key;
  std::string acc_restrict_text;
  bool acc_restricted = false;
  bool loading = false;
  bool allow_view = false;
  bool allow_print = false;
  float row_height = 250;
  float row_height_title = 400;
  float row_height_sum = 400;
  int title_as_laid_out = 0;  // twips
  int data_as_laid_out = 0;
  platform::Colour back_color_hot = 0x00E2D2C7;
  platform::Colour fore_color_hot = 0;
  int64_t record_count = -1;  // of the last journal query; -1 before the first
  std::unique_ptr<interaction::GridHandlers> handlers;
  int watched = 0;  // the scopes of Watched, one inside another
};

// In every member that may change the journal's properties: where the outermost of these scopes ends, the site hears
// whether one of them is another than it was.
class Stockbook::State::Watched {
 public:
  explicit Watched(State& state);
  ~Watched();
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

 private:
  template <typename... Values>
  static std::tuple<std::remove_const_t<Values>...> Copy(const std::tuple<const Values&...>& values) {
    return values;
  }

  State& state_;
  std::optional<decltype(Copy(std::declval<const State&>().JournalValues()))> before_;
};

}  // namespace stockbook::control
