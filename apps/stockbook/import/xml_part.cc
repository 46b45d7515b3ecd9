// SPDX-License-Identifier: MIT
#include "stockbook/import/xml_part.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>
#include <string>

namespace stockbook::app {
namespace {

constexpr int kXmlBlock = 1 << 16;

std::string_view LocalName(std::string_view name) {
  const size_t colon = name.rfind(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// Exceptions must not pass through the library, which is in C.
struct XmlReading {
  XmlListener& listener;
  XML_Parser parser;
  std::exception_ptr error;

  template <typename Call>
  void Guard(const Call& call) {
    if (error != nullptr) return;
    try {
      call();
    } catch (...) {
      error = std::current_exception();
      XML_StopParser(parser, XML_FALSE);
    }
  }
};

void OnBegin(void* data, const XML_Char* name, const XML_Char** attributes) {
  auto& reading = *static_cast<XmlReading*>(data);
  reading.Guard([&] { reading.listener.Begin(LocalName(name), XmlAttributes(attributes)); });
}

void OnEnd(void* data, const XML_Char* name) {
  auto& reading = *static_cast<XmlReading*>(data);
  reading.Guard([&] { reading.listener.End(LocalName(name)); });
}

void OnText(void* data, const XML_Char* text, int length) {
  auto& reading = *static_cast<XmlReading*>(data);
  reading.Guard([&] { reading.listener.Text({text, static_cast<size_t>(length)}); });
}

}  // namespace

std::optional<std::string_view> XmlAttributes::Find(std::string_view name) const {
  for (const char* const* at = list_; *at != nullptr; at += 2) {
    if (LocalName(at[0]) == name) return at[1];
  }
  return std::nullopt;
}

bool ReadXml(const ReadBytes& read, XmlListener& listener) {
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr), XML_ParserFree);
  if (parser == nullptr) throw std::bad_alloc();
  XmlReading reading{listener, parser.get(), nullptr};
  XML_SetUserData(parser.get(), &reading);
  XML_SetElementHandler(parser.get(), OnBegin, OnEnd);
  XML_SetCharacterDataHandler(parser.get(), OnText);
  for (;;) {
    void* const buffer = XML_GetBuffer(parser.get(), kXmlBlock);
    if (buffer == nullptr) throw std::bad_alloc();
    const size_t count = read(static_cast<char*>(buffer), kXmlBlock);
    const XML_Status status = XML_ParseBuffer(parser.get(), static_cast<int>(count), count == 0);
    if (reading.error != nullptr) std::rethrow_exception(reading.error);
    if (status != XML_STATUS_OK) return false;
    if (count == 0) return true;
  }
}

}  // namespace stockbook::app
