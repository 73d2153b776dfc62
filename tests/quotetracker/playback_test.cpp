#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include "quotetracker/server.h"
#include "quotetracker/session_file.h"
#include "support/tcp_client.h"
#include "support/temp_directory.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using testing::TcpClient;
using testing::TempDirectory;

class PlaybackTest : public ::testing::Test {
 protected:
  std::unique_ptr<Server> Play(double speed = 1) {
    ServerOptions options;
    options.play = path_;
    options.play_speed = speed;
    options.complain = [this](const std::string& message) {
      const std::lock_guard lock(mutex_);
      complaint_ = message;
    };
    return std::make_unique<Server>(std::move(options));
  }

  std::string Complaint() {
    const std::lock_guard lock(mutex_);
    return complaint_;
  }

  TempDirectory directory_;
  std::string path_ = (directory_ / "session").string();
  std::mutex mutex_;
  std::string complaint_;
};

TEST_F(PlaybackTest, SendsEveryByteAndCloses) {
  std::string every_byte;
  for (int i = 0; i < 256; ++i) every_byte += static_cast<char>(i);
  const std::string large(3'000'000, 'x');
  {
    SessionWriter writer(path_);
    writer.Add(0us, every_byte);
    writer.Add(10us, large);
    writer.Add(10us, "end");
  }
  const auto server = Play();
  EXPECT_EQ(TcpClient(server->StreamPort()).ReceiveAll(), every_byte + large + "end");
}

TEST_F(PlaybackTest, PlaysToEachClientFromTheBeginning) {
  {
    SessionWriter writer(path_);
    writer.Add(0us, "session");
  }
  const auto server = Play();
  EXPECT_EQ(TcpClient(server->StreamPort()).ReceiveAll(), "session");
  EXPECT_EQ(TcpClient(server->StreamPort()).ReceiveAll(), "session");
}

TEST_F(PlaybackTest, SendsNoChunkBeforeItsTime) {
  {
    SessionWriter writer(path_);
    writer.Add(0us, "a");
    writer.Add(400'000us, "b");
  }
  for (const auto& [speed, least] : {std::pair{1.0, 400ms}, std::pair{4.0, 100ms}}) {
    SCOPED_TRACE(speed);
    const auto server = Play(speed);
    const auto begin = std::chrono::steady_clock::now();
    TcpClient client(server->StreamPort());
    EXPECT_EQ(client.ReceiveChunk(), "a");
    EXPECT_EQ(client.ReceiveChunk(), "b");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, least - 1ms);
  }
}

TEST_F(PlaybackTest, DoesNotListenToTheClient) {
  {
    SessionWriter writer(path_);
    writer.Add(0us, "greeting");
    writer.Add(50'000us, "answer");
  }
  const auto server = Play();
  TcpClient client(server->StreamPort());
  client.Send("<LOGIN></LOGIN>\xFF");
  EXPECT_EQ(client.ReceiveAll(), "greetinganswer");
}

TEST_F(PlaybackTest, StillAnswersOverHttp) {
  {
    SessionWriter writer(path_);
    writer.Add(0us, "greeting");
  }
  const auto server = Play();
  EXPECT_THAT(testing::HttpGet(server->HttpPort(), "/req?EnumPorts()"), HasSubstr("OK\r\nMain"));
}

TEST_F(PlaybackTest, RefusesADamagedSessionAtTheStart) {
  std::ofstream(path_) << "no session";
  try {
    Play();
    FAIL() << "played";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), path_ + ": is no recorded session");
  }
}

TEST_F(PlaybackTest, ComplainsOfASessionThatIsDamagedLater) {
  {
    SessionWriter writer(path_);
    writer.Add(0us, "greeting");
  }
  const auto server = Play();
  std::ofstream(path_, std::ios::app) << "more";
  EXPECT_EQ(TcpClient(server->StreamPort()).ReceiveAll(), "greeting");
  EXPECT_THAT(Complaint(), HasSubstr("is damaged at byte 40"));
  std::ofstream(path_) << "";
  EXPECT_EQ(TcpClient(server->StreamPort()).ReceiveAll(), "");
  EXPECT_EQ(Complaint(), path_ + ": is no recorded session");
}

}  // namespace
}  // namespace mirelo::quotetracker
