#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/wininet_api.h"

namespace mirelo::testing {

// An internet port that answers from a script and writes down each call with its arguments, as
//
//   InternetConnectA(1, "127.0.0.1", 16239, "", "", 3)
//
// The handles are 1, 2 and 3, in the order in which a transfer opens them.
class ScriptedWinInet : public host::WinInetApi {
 public:
  // What the calls answer. Set before the transfer, or from `on_call`.
  std::set<std::string> failing;         // names of the calls that fail
  std::optional<std::string> canonical;  // instead of the resource that was given
  std::optional<std::string> content_type;
  std::optional<std::string> content_length;
  std::optional<std::string> request_method;
  std::vector<std::string> chunks;        // one for each read, and then reads of 0 bytes
  bool failing_reads_have_bytes = false;  // a read that fails gives its chunk all the same
  std::vector<std::uint32_t> claims;  // for each read, what it says it has read instead of its chunk's size

  // Called inside each call, behind its entry in the record, with its name.
  std::function<void(const std::string& name)> on_call;

  std::vector<std::string> calls;
  // The record without the arguments.
  std::vector<std::string> CallNames() const {
    std::vector<std::string> names;
    for (const std::string& call : calls) names.push_back(call.substr(0, call.find('(')));
    return names;
  }

  Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) override {
    return Answer("InternetOpenA", {agent ? Quoted(*agent) : "none", Number(access_type)}) ? 1 : 0;
  }
  bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) override {
    return Answer("InternetSetOptionA", {Number(handle), Number(option), Number(value)});
  }
  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override {
    return Answer("InternetConnectA", {Number(internet), Quoted(host), Number(port), Quoted(user),
                                       Quoted(password), Number(service)})
               ? 2
               : 0;
  }
  std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                      std::uint32_t flags) override {
    if (!Answer("InternetCanonicalizeUrlA", {Quoted(url), Number(capacity), Number(flags)}))
      return std::nullopt;
    return canonical.value_or(url);
  }
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override {
    return Answer("HttpOpenRequestA", {Number(connection), Quoted(verb), Quoted(object), Quoted(version),
                                       Quoted(referrer), Number(flags)})
               ? 3
               : 0;
  }
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override {
    return Answer("HttpSendRequestA", {Number(request), Quoted(headers), Quoted(body)});
  }
  std::optional<std::string> HttpQueryInfoA(Handle request, std::uint32_t level,
                                            std::uint32_t capacity) override {
    if (!Answer("HttpQueryInfoA", {Number(request), Number(level), Number(capacity)})) return std::nullopt;
    return level == kQueryContentType     ? content_type
           : level == kQueryContentLength ? content_length
                                          : request_method;
  }
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override {
    read = 0;
    const bool works = Answer("InternetReadFile", {Number(request), Number(capacity)});
    if (!works && !failing_reads_have_bytes) return false;
    const std::size_t number = next_read_++;
    if (number < chunks.size()) read = static_cast<std::uint32_t>(chunks[number].copy(buffer, capacity));
    if (number < claims.size()) read = claims[number];
    return works;
  }
  bool InternetCloseHandle(Handle handle) override { return Answer("InternetCloseHandle", {Number(handle)}); }

 private:
  template <class T>
  static std::string Number(T number) {
    return std::to_string(number);
  }
  static std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

  // Writes the call down; whether it is to succeed.
  bool Answer(const std::string& name, const std::vector<std::string>& arguments) {
    std::string call = name + "(";
    for (const std::string& argument : arguments)
      call += (&argument == arguments.data() ? "" : ", ") + argument;
    calls.push_back(call + ")");
    if (on_call) on_call(name);
    return !failing.contains(name);
  }

  std::size_t next_read_ = 0;
};

}  // namespace mirelo::testing
