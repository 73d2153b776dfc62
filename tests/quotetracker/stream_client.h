#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/login.h"
#include "quotetracker/record_reader.h"
#include "support/tcp_client.h"

namespace mirelo::quotetracker {

// A plain client of the stream that waits for each answer.
class StreamClient {
 public:
  explicit StreamClient(std::uint16_t port, int receive_buffer = 0) : tcp_(port, receive_buffer) {}

  testing::TcpClient& Tcp() { return tcp_; }

  void Say(std::string_view message) { tcp_.Send(std::string(message) + '\xFF'); }

  // Says a message and gives what comes up to the closing tag.
  std::string Ask(std::string_view message, std::string_view closing_tag) {
    Say(message);
    return tcp_.ReceiveUntil(closing_tag);
  }

  std::string ReadGreeting() { return tcp_.ReceiveUntil("</CONNECT>"); }

  std::string LogIn(const Credentials& credentials = {}) {
    const std::string greeting = ReadGreeting();
    return Ask(LoginMessage(credentials.app_name, LoginDigest(credentials.app_secret, ServerTime(greeting))),
               "</STATUSDESC>");
  }

  static std::string LoginMessage(const std::string& app_name, const std::string& digest) {
    return "<LOGIN><AppName>" + app_name + "</AppName><AppID>" + app_name +
           "</AppID><AppVer>1</AppVer><AppAuth>" + digest + "</AppAuth></LOGIN>";
  }

  static std::string ServerTime(const std::string& greeting) {
    const auto begin = greeting.find("<SERVERTIME>") + 12;
    return greeting.substr(begin, greeting.find("</SERVERTIME>") - begin);
  }

  void Subscribe(const std::string& symbols) {
    Say("<L1QUOTES><ReqType>SUB</ReqType><Symbols>" + symbols + "</Symbols></L1QUOTES>");
  }

  // The next whole record.
  ReadRecord ReadOne() {
    while (RecordReader::WholeLength(Unread()) == 0) {
      const std::string chunk = tcp_.ReceiveChunk();
      if (chunk.empty()) throw std::runtime_error("the stream ended");
      bytes_.erase(0, read_);
      read_ = 0;
      bytes_ += chunk;
    }
    std::string_view rest = Unread();
    ReadRecord record = RecordReader::Take(rest);
    read_ = bytes_.size() - rest.size();
    return record;
  }

  std::vector<ReadRecord> ReadRecords(std::size_t count) {
    std::vector<ReadRecord> records;
    while (records.size() < count) records.push_back(ReadOne());
    return records;
  }

 private:
  std::string_view Unread() const { return std::string_view(bytes_).substr(read_); }

  testing::TcpClient tcp_;
  std::string bytes_;
  std::size_t read_ = 0;  // so many of the bytes
};

}  // namespace mirelo::quotetracker
