// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace stockbook::app {

// The attributes of an element, valid while it is told of.
class XmlAttributes {
 public:
  // Names and values by turns, ended by nullptr.
  explicit XmlAttributes(const char* const* list) : list_(list) {}
  // The value of the name, whatever namespace it has; nothing if it is not there.
  std::optional<std::string_view> Find(std::string_view name) const;

 private:
  const char* const* list_;
};

// Hears of the elements of a document in order, their names without namespaces.
class XmlListener {
 public:
  virtual ~XmlListener() = default;
  virtual void Begin(std::string_view element, const XmlAttributes& attributes) = 0;
  virtual void End(std::string_view element) = 0;
  // A piece of the text of the innermost element.
  virtual void Text(std::string_view text) = 0;
};

// Reads up to that many bytes; 0 at the end.
using ReadBytes = std::function<size_t(char* buffer, size_t size)>;

// Reads a document in the memory of a block; false if it is not well-formed. What `read` throws is passed on.
bool ReadXml(const ReadBytes& read, XmlListener& listener);

}  // namespace stockbook::app
