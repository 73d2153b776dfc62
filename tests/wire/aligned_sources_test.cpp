// Lists of sources, of which an aligner gives those that were asked for.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "wire/aligned_chunks.h"
#include "wire/message_aligner.h"

namespace mirelo::wire {
namespace {

using namespace mirelo::testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(MessageAligner, GivesAListOfSourcesForEachThatWasAskedFor) {
  MessageAligner aligner;
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, kSources + Record("S1", 20) + kSources + Record("L1", 20)),
              ElementsAre(kSources, Record("S1", 20), Record("L1", 20)));
  EXPECT_THAT(aligner.TakeNews(), IsEmpty());
}

TEST(MessageAligner, GivesAListOfSourcesWholeWhereverItIsCut) {
  const std::string list = kSources;
  for (std::size_t cut = 1; cut < list.size(); ++cut) {
    SCOPED_TRACE(list.substr(0, cut));
    MessageAligner aligner;
    aligner.NoteRequest(kAskSources);
    EXPECT_THAT(Feed(aligner, list.substr(0, cut)), IsEmpty());
    EXPECT_THAT(Feed(aligner, list.substr(cut) + kGreeting), ElementsAre(list, kGreeting));
  }
}

TEST(MessageAligner, GivesNoListThatNobodyAskedFor) {
  for (const char* request : {"", "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>\xFF"}) {
    MessageAligner aligner;
    aligner.NoteRequest(request);
    EXPECT_THAT(Feed(aligner, kSources + Record("S1", 20)), ElementsAre(Record("S1", 20)));
    EXPECT_THAT(Feed(aligner, "ES?"), IsEmpty());
    EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
    EXPECT_THAT(LetGo(aligner), IsEmpty());
    EXPECT_THAT(Feed(aligner, kLoggedIn), ElementsAre(kLoggedIn));
  }
}

TEST(MessageAligner, GivesAListBehindStrayLettersOfItsKind) {
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, "ES?"), IsEmpty());
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, kSources), ElementsAre(kSources));
}

TEST(MessageAligner, LeavesOutAListThatBreaksOffAndTells) {
  MessageAligner aligner;
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Record("S1", 20)),
              ElementsAre(Record("S1", 20)));
  EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("broke off")));
  EXPECT_THAT(Feed(aligner, "ES<SOURCES><SOURCETYPE>"), IsEmpty());
  EXPECT_EQ(aligner.Patience(), MessageAligner::kLongPatience);
  EXPECT_THAT(LetGo(aligner), IsEmpty());
  EXPECT_THAT(Feed(aligner, kSources), ElementsAre(kSources)) << "it is still awaited";
}

TEST(MessageAligner, GivesAListUpToItsBoundAndNoneBeyond) {
  const std::string begin = "ES<SOURCES>";
  const std::string end = "</SOURCES>";
  const std::size_t room = MessageAligner::kLongestSources - begin.size() - end.size();
  for (const std::size_t size : {room, room + 1}) {
    MessageAligner aligner;
    aligner.NoteRequest(kAskSources);
    Chunks chunks = Feed(aligner, begin);
    for (std::size_t at = 0; at < size; at += kChunkLimit) {
      for (auto& chunk : Feed(aligner, std::string(std::min(kChunkLimit, size - at), 'x')))
        chunks.push_back(std::move(chunk));
    }
    EXPECT_FALSE(aligner.IsOverfull());
    for (auto& chunk : Feed(aligner, end)) chunks.push_back(std::move(chunk));
    EXPECT_EQ(chunks.size(), size == room ? 1U : 0U);
    EXPECT_EQ(aligner.IsOverfull(), size != room);
  }
}

}  // namespace
}  // namespace mirelo::wire
