// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/images.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/property_bag.h"
#include "stockbook/platform/text_metrics.h"
#include "support/event_recorder.h"
#include "support/faults.h"

namespace stockbook::testing {

// Each stands before another port, and any of its calls may be the one that fails.

class FaultyConnection : public platform::Connection {
 public:
  FaultyConnection(std::shared_ptr<platform::Connection> real, Faults& faults)
      : real_(std::move(real)), faults_(faults) {}
  std::string ConnectionString() const override {
    faults_.Meet("ConnectionString");
    return real_->ConnectionString();
  }
  platform::Recordset Execute(std::string_view statement, int options) override {
    faults_.Meet("Execute");
    return real_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override {
    faults_.Meet("ReadAsOfOneMoment");
    return real_->ReadAsOfOneMoment();
  }

 private:
  std::shared_ptr<platform::Connection> real_;
  Faults& faults_;
};

class FaultyImages : public platform::Images {
 public:
  FaultyImages(const platform::Images& real, Faults& faults) : real_(real), faults_(faults) {}
  platform::PictureRef Find(std::string_view key) const override {
    faults_.Meet("Images::Find");
    return real_.Find(key);
  }

 private:
  const platform::Images& real_;
  Faults& faults_;
};

class FaultyMetrics : public platform::TextMetrics {
 public:
  FaultyMetrics(const platform::TextMetrics& real, Faults& faults) : real_(real), faults_(faults) {}
  double TextHeightTwips(std::string_view text, const platform::Font& font) const override {
    faults_.Meet("TextHeightTwips");
    return real_.TextHeightTwips(text, font);
  }
  double TwipsPerPixelY() const override {
    faults_.Meet("TwipsPerPixelY");
    return real_.TwipsPerPixelY();
  }

 private:
  const platform::TextMetrics& real_;
  Faults& faults_;
};

class FaultyMenu : public platform::Menu {
 public:
  FaultyMenu(platform::Menu& real, Faults& faults) : real_(real), faults_(faults) {}
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override {
    faults_.Meet("PopUp");
    return real_.PopUp(menu);
  }

 private:
  platform::Menu& real_;
  Faults& faults_;
};

class FaultyClipboard : public platform::Clipboard {
 public:
  FaultyClipboard(platform::Clipboard& real, Faults& faults) : real_(real), faults_(faults) {}
  void Clear() override {
    faults_.Meet("Clear");
    real_.Clear();
  }
  void SetText(std::string text) override {
    faults_.Meet("SetText");
    real_.SetText(std::move(text));
  }

 private:
  platform::Clipboard& real_;
  Faults& faults_;
};

class FaultySite : public platform::ControlSite {
 public:
  explicit FaultySite(Faults& faults) : faults_(faults) {}
  void PropertyChanged(std::string_view /*key*/) override { faults_.Meet("PropertyChanged"); }
  void FrameChanged() override { faults_.Meet("FrameChanged"); }

 private:
  Faults& faults_;
};

class FaultyBag : public platform::PropertyBag {
 public:
  FaultyBag(platform::PropertyBag& real, Faults& faults) : real_(real), faults_(faults) {}
  platform::BagValue Read(std::string_view key, const platform::BagValue& fallback) override {
    faults_.Meet("Read");
    return real_.Read(key, fallback);
  }
  void Write(std::string_view key, const platform::BagValue& value) override {
    faults_.Meet("Write");
    real_.Write(key, value);
  }

 private:
  platform::PropertyBag& real_;
  Faults& faults_;
};

// Writes the events down; hearing one may be what fails.
class FaultyListener : public EventRecorder {
 public:
  explicit FaultyListener(Faults& faults) {
    on_hearing = [&faults](const std::string&) { faults.Meet("listener"); };
  }
};

}  // namespace stockbook::testing
