// SPDX-License-Identifier: MIT
//
// What is unsent, between a database, the senders and a line at whose other end somebody answers
// or nobody.

#include "switcher/unsent/unsent_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "stations/record.h"
#include "switcher/decoder.h"
#include "switcher/link.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using stations::Origin;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr TablePart kOptoTable{.table = Table::Optos};
constexpr TablePart kStationLabels{.table = Table::OutputLabels};
constexpr TablePart kInputLabels{.table = Table::InputLabels};

TEST(Digest, DependsOnEachByte) {
  EXPECT_EQ(DigestOf({}), 0xCBF29CE484222325);
  EXPECT_EQ(DigestOf(test::FromHex("61")), 0xAF63DC4C8601EC8C);
  EXPECT_EQ(DigestOf(test::FromHex("66 6F 6F 62 61 72")), 0x85944171F73967E8);
  const Bytes message = test::FromHex("F5 02 00 01 00 00 00 03 FF");
  for (std::size_t i = 0; i < message.size(); ++i) {
    Bytes other = message;
    other[i] ^= 1;
    EXPECT_NE(DigestOf(other), DigestOf(message)) << i;
  }
  EXPECT_EQ(DigestOf(test::FromHex("62 61 72"), DigestOf(test::FromHex("66 6F 6F"))),
            DigestOf(test::FromHex("66 6F 6F 62 61 72")));
}

class UnsentMessagesTest : public testing::Test, protected UnsentMessages::Listener {
 protected:
  UnsentMessagesTest() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 8;
    model_.StationCount = 2;
    model_.LabelCount = 2;
    model_.OptoCount = 2;
    model_.AllocateMap();
    for (const int station : {1, 2}) {
      database_.AddStation(station, {{"Label", "Sta. " + std::to_string(station)},
                                     {"InLabel", "Inpt " + std::to_string(station)},
                                     {"Inhibits", test::kNoFlags},
                                     {"Relays", test::kNoFlags},
                                     {"OptoStations", test::kNoFlags}});
    }
  }

  void SetUp() override {
    ASSERT_TRUE(link_.OpenPort().ok());
    unsent_.SetListener(this);
    unsent_.Begin({});
  }

  // The switcher is there, and has told all that it is asked for first.
  void ConnectSwitcher() {
    model_.XmapComplete = true;
    model_.TallySeen = true;
    port_.Deliver("EB");
    port_.TakeWritten();
  }

  void Edit(int station, std::string_view field, const jet::Value& value,
            Origin origin = Origin::Operator) {
    database_.GoTo(station);
    stations::Record record(*database_.Files().Stations());
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({changes_, origin}).ok());
  }

  // The part goes out whole and leaves the port.
  void Send(const TablePart& part) {
    senders_.Make(part).Run();
    port_.Drain();
  }

  void Poll(std::string_view answer = "") {
    link_.PollTick();
    if (!answer.empty()) port_.Deliver(answer);
  }

  std::vector<TablePart> Unsent() const {
    std::vector<TablePart> parts;
    for (const auto& [part, since] : unsent_.Unsent()) parts.push_back(part);
    return parts;
  }

  static std::string Inhibited(int source) {
    std::string flags = test::kNoFlags;
    flags[static_cast<std::size_t>(source - 1)] = '1';
    return flags;
  }

  void UnsentChanged() override { ++changed_; }
  void OnlyHeldChanged() override { kept_ = WriteHeld(unsent_.Held()); }
  void PartEdited(const TablePart& part) override { edited_.push_back(part); }
  void PartsNotConfirmed(const std::vector<TablePart>& parts) override {
    notConfirmed_ = parts;
    changedBeforeGivenUp_ = changed_;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  stations::Changes changes_;
  unsigned today_ = 21;
  UnsentMessages unsent_{{.model = model_,
                          .database = [this] { return database_.Files().Database(); },
                          .changes = changes_,
                          .today =
                              [this] {
                                return Day(std::chrono::year(2026), std::chrono::November,
                                           std::chrono::day(today_));
                              }}};
  TableSenders senders_{{.model = model_,
                         .files = database_.Files(),
                         .port = port_,
                         .reporter = reporter_,
                         .account = &unsent_}};
  Decoder decoder_{{.model = model_,
                    .database = [this] { return database_.Files().Database(); },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {unsent_}}};
  test::SilentLinkDisplay display_;
  Link link_{{.model = model_,
              .port = port_,
              .decoder = decoder_,
              .display = display_,
              .account = &unsent_}};
  std::string kept_;  // when it was last told that nothing but that has changed
  int changed_ = 0;
  int changedBeforeGivenUp_ = 0;
  std::vector<TablePart> edited_;
  std::vector<TablePart> notConfirmed_;
};

TEST_F(UnsentMessagesTest, WhatWasFoundIsNotUnsentThoughTheSwitcherNeverSawIt) {
  EXPECT_THAT(Unsent(), IsEmpty());
  EXPECT_EQ(unsent_.NeverSeen(), unsent_.Count());
  EXPECT_EQ(unsent_.Count(), 9) << "three tables, and three messages of each station";
}

TEST_F(UnsentMessagesTest, AnEditIsUnsentUntilItIsTakenBack) {
  Edit(2, "Inhibits", Inhibited(3));
  EXPECT_THAT(unsent_.Unsent(),
              ElementsAre(std::pair(
                  TablePart{Table::Inhibits, 2},
                  Day(std::chrono::year(2026), std::chrono::November, std::chrono::day(21)))));
  EXPECT_GT(changed_, 0);
  Edit(2, "Inhibits", test::kNoFlags, Origin::Undo);
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, EveryTableThatAFieldIsInIsUnsent) {
  Edit(1, "OptoFirst", 7);
  EXPECT_THAT(Unsent(), ElementsAre(kOptoTable));
  Edit(1, "Hidden", 1);
  Edit(2, "Relays", Inhibited(4));
  Edit(2, "B3 Type", 1);
  EXPECT_THAT(Unsent(), ElementsAre(kOptoTable, kStationLabels, kInputLabels,
                                    TablePart{Table::Relays, 2}, TablePart{Table::Buttons, 2}));
}

// Flags travel as they are stored: 32 buttons with 256 targets each are 2181 bytes.
TEST_F(UnsentMessagesTest, AMessageIsAsLongAsItIsSent) {
  ConnectSwitcher();
  for (int button = 1; button <= model_.ButtonCount; ++button) {
    Edit(1, "B" + std::to_string(button) + " Prog", std::string(256, '0'));
  }
  for (const TablePart& part :
       {TablePart{Table::Buttons, 1}, TablePart{Table::Buttons, 2}, TablePart{Table::Inhibits, 1},
        TablePart{Table::Relays, 1}, kOptoTable, kStationLabels, kInputLabels}) {
    int values = 0;
    Transmission transmission = senders_.Make(part);
    while (transmission.Step([&] { ++values; })) continue;
    const auto bytes = static_cast<int>((port_.TakeWritten().size() + 1) / 3);
    EXPECT_EQ(unsent_.SizeOf(part).bytes, bytes);
    EXPECT_EQ(unsent_.SizeOf(part).values, values);
  }
  EXPECT_EQ(unsent_.SizeOf({Table::Buttons, 1}).bytes, 2181);
  EXPECT_EQ(unsent_.SizeOf({Table::Buttons, 3}).bytes, 0) << "there is none";
}

TEST_F(UnsentMessagesTest, WhatDoesNotTravelIsNotUnsent) {
  Edit(1, "Notes", "Studio 3");
  Edit(1, "Inhibits", test::kNoFlags + "1");  // beyond the channels
  Edit(1, "Label", "Sta. 1  ");               // travels as before
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, OnlyEditsOfWhoeverWorksHereAreTold) {
  Edit(1, "Label", "A");
  Edit(1, "B1 Type", 254, Origin::Navigation);
  Edit(2, "Relays", Inhibited(1), Origin::Switcher);
  Edit(2, "Label", "B", Origin::Restore);
  EXPECT_THAT(edited_,
              ElementsAre(TablePart{Table::OutputLabels, 1}, TablePart{Table::Buttons, 1}));
}

TEST_F(UnsentMessagesTest, AnEditMakesOnlyItsOwnMessagesAnew) {
  const int before = unsent_.Made();
  Edit(1, "Inhibits", Inhibited(3));
  EXPECT_EQ(unsent_.Made(), before + 1);
  Edit(1, "Hidden", 1);
  EXPECT_EQ(unsent_.Made(), before + 3);
  Edit(1, "Notes", "Studio 3");
  EXPECT_EQ(unsent_.Made(), before + 3);
}

TEST_F(UnsentMessagesTest, WhatWasSentIsHeldWhenTheNextPollIsAnswered) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 04 00 04 FF");
  EXPECT_TRUE(unsent_.IsWaiting());
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Poll();
  EXPECT_EQ(port_.TakeWritten(), "ED");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  port_.Deliver("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
  EXPECT_FALSE(unsent_.IsWaiting());
  EXPECT_EQ(unsent_.NeverSeen(), unsent_.Count() - 1) << "of the others nobody knows";
  EXPECT_THAT(notConfirmed_, IsEmpty());
}

TEST_F(UnsentMessagesTest, AnAnswerToAnEarlierPollConfirmsNothing) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Poll();
  Send({Table::Inhibits, 1});
  port_.Deliver("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

// That answer comes when the poll behind the message is already on the line.
TEST_F(UnsentMessagesTest, ALateAnswerToAnEarlierPollConfirmsNothing) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Poll();
  Send({Table::Inhibits, 1});
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  EXPECT_TRUE(unsent_.IsWaiting());
  port_.Deliver("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
  EXPECT_FALSE(unsent_.IsWaiting());
}

TEST_F(UnsentMessagesTest, AnAnswerThatWasLostWhileNothingWasSentIsGivenUp) {
  ConnectSwitcher();
  Poll();
  for (int poll = 0; poll < 10; ++poll) Poll("EB");
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

// They may be those that an earlier poll asked for.
TEST_F(UnsentMessagesTest, RowsOfTheMapConfirmNothing) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  model_.XmapComplete = false;
  Poll();
  Send({Table::Inhibits, 1});
  port_.TakeWritten();
  Poll("F3 00 00 00 00 01 00 01 FF");
  EXPECT_EQ(port_.TakeWritten(), "E5");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  for (int poll = 0; poll < 20; ++poll) Poll();
  EXPECT_THAT(notConfirmed_, IsEmpty()) << "the keep-alive is still to come";
  model_.XmapComplete = true;
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, AnEarlierMessageOfAPartIsNotConfirmedBehindALaterOne) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Poll();
  Edit(1, "Inhibits", Inhibited(4));
  Send({Table::Inhibits, 1});
  Edit(1, "Inhibits", Inhibited(3));
  port_.Deliver("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  EXPECT_TRUE(unsent_.IsWaiting());
  Poll("EB");
  Edit(1, "Inhibits", Inhibited(4));
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, OnALineWhereNobodyAnswersNothingChanges) {
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 04 00 04 FF");
  EXPECT_FALSE(unsent_.IsWaiting());
  ConnectSwitcher();
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Edit(1, "Inhibits", test::kNoFlags);
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, WhatIsChangedBeforeTheAnswerIsHeldAsItWasSent) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Edit(1, "Inhibits", Inhibited(4));
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Edit(1, "Inhibits", Inhibited(3));
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, WhatALostLineMayHaveSwallowedStaysUnsentWhateverIsEdited) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  port_.Vanish();
  EXPECT_THAT(notConfirmed_, ElementsAre(TablePart{Table::Inhibits, 1}));
  EXPECT_GT(changed_, changedBeforeGivenUp_)
      << "first that it is given up, then that nothing waits";
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  // The switcher may have it all the same.
  Edit(1, "Inhibits", test::kNoFlags);
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Poll("EB");  // opens the port again
  ConnectSwitcher();
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Send({Table::Inhibits, 1});
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, UnpluggedInTheMiddleOfAMessageItStaysUnsent) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  port_.writesUntilFailure = 4;
  Send({Table::Inhibits, 1});
  port_.writesUntilFailure = -1;
  Poll("EB");
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

// Only its end is missing: whether the switcher took it nobody knows.
TEST_F(UnsentMessagesTest, WhatWasCutShortStaysUnsentWhateverIsEdited) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  port_.writesUntilFailure = 6;
  Send({Table::Inhibits, 1});
  port_.writesUntilFailure = -1;
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 04 00 04");
  EXPECT_FALSE(unsent_.IsWaiting());
  Edit(1, "Inhibits", test::kNoFlags);
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  Send({Table::Inhibits, 1});
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, AnEarlierMessageIsNotConfirmedBehindOneThatWasCutShort) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Edit(1, "Inhibits", Inhibited(4));
  port_.writesUntilFailure = 6;
  Send({Table::Inhibits, 1});
  port_.writesUntilFailure = -1;
  Poll("EB");
  Edit(1, "Inhibits", Inhibited(3));
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

TEST_F(UnsentMessagesTest, OfWhichNotAByteWentOutIsAsItWas) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  port_.writesUntilFailure = 0;
  Send({Table::Inhibits, 1});
  port_.writesUntilFailure = -1;
  EXPECT_EQ(port_.TakeWritten(), "");
  Edit(1, "Inhibits", test::kNoFlags);
  EXPECT_THAT(Unsent(), IsEmpty());
}

// It repeats what is there.
TEST_F(UnsentMessagesTest, WhatTheSwitcherHoldsAndIsCutShortIsHeldAsBefore) {
  ConnectSwitcher();
  for (const TablePart& part : {TablePart{Table::Inhibits, 1}, kStationLabels}) {
    port_.writesUntilFailure = 6;
    Send(part);
    port_.writesUntilFailure = -1;
  }
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, AfterAGapInTheAnswersNothingIsConfirmed) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Poll();  // the cable is out
  for (int poll = 0; poll < 9; ++poll) Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  EXPECT_THAT(notConfirmed_, IsEmpty());
  Poll("EB");
  EXPECT_THAT(notConfirmed_, ElementsAre(TablePart{Table::Inhibits, 1}));
  EXPECT_FALSE(unsent_.IsWaiting());
  Send({Table::Inhibits, 1});
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, ASlowSwitcherConfirmsWhenItHasAnsweredEveryPoll) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Poll();
  Poll();
  Poll("EB EB");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
  port_.Deliver("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

// Rows come unasked, too: of a keep-alive poll they are no answer.
TEST_F(UnsentMessagesTest, AReportOfItsOwnIsNoAnswer) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Send({Table::Inhibits, 1});
  Poll("F3 00 00 00 00 01 00 01 FF");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

TEST_F(UnsentMessagesTest, LabelsAreSentWhenBothMessagesAre) {
  ConnectSwitcher();
  Edit(1, "Label", "MIC");
  // The order is nine bytes.
  port_.writesUntilFailure = 12;
  Send(kStationLabels);
  port_.writesUntilFailure = -1;
  Poll("EB");
  EXPECT_THAT(Unsent(), ElementsAre(kStationLabels));
  Send(kStationLabels);
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

// With another order the texts that the switcher has are those of other stations.
TEST_F(UnsentMessagesTest, LabelsOfWhichTheOrderWentOutAloneStayUnsentWhateverIsEdited) {
  ConnectSwitcher();
  Edit(1, "Label", "TALK");
  Transmission labels = senders_.Make(kStationLabels);
  ASSERT_TRUE(labels.Step());
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 01 00 00 00 15 FF");
  EXPECT_THAT(kept_, StartsWith("station-labels - open "));
  port_.writesUntilFailure = 0;
  EXPECT_FALSE(labels.Step());
  port_.writesUntilFailure = -1;
  Edit(1, "Label", "Sta. 1");
  EXPECT_THAT(Unsent(), ElementsAre(kStationLabels));
  Send(kStationLabels);
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, ATableOfTheSwitcherIsHeld) {
  Edit(1, "Inhibits", Inhibited(3));
  port_.Deliver("F5 00 00 08 00 08 FF");
  EXPECT_EQ(database_.Field(1, "Inhibits").substr(0, 8), "00010000");
  EXPECT_THAT(Unsent(), IsEmpty());
  EXPECT_EQ(unsent_.NeverSeen(), unsent_.Count() - 1) << "of the others nobody knows";
  Edit(1, "Inhibits", Inhibited(3));
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

TEST_F(UnsentMessagesTest, ARefusedTableIsNot) {
  Edit(1, "Inhibits", Inhibited(3));
  port_.Deliver("F5 00 00 08 00 09 FF");
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

// "Inpt 1  ", "Inpt 2  "
constexpr char kInputsReported[] = "F9 0A 49 6E 70 74 20 31 20 20 49 6E 70 74 20 32 20 20 63 FF";
constexpr char kInputsSpoiled[] = "F9 0A 49 6E 70 74 20 31 20 20 49 6E 70 74 20 32 20 20 64 FF";
// "{ta. 1  ", "Sta. 2  ": who is hidden is marked in the input labels, too.
constexpr char kHiddenReported[] = "F9 14 7B 74 61 2E 20 31 20 20 53 74 61 2E 20 32 20 20 0B FF";

TEST_F(UnsentMessagesTest, WhoIsHiddenIsHeldInTheInputLabelsThatTheSwitcherSent) {
  port_.Deliver(kInputsReported);
  port_.Deliver(kHiddenReported);
  EXPECT_EQ(database_.Field(1, "Hidden"), "1");
  EXPECT_THAT(Unsent(), IsEmpty());
}

TEST_F(UnsentMessagesTest, InputLabelsOfTheSwitcherBeforeAreNot) {
  port_.Deliver(kInputsReported);
  port_.Vanish();
  Poll();  // opens the port again
  port_.Deliver(kHiddenReported);
  EXPECT_THAT(Unsent(), ElementsAre(kInputLabels));
}

TEST_F(UnsentMessagesTest, InputLabelsThatWereSentAgainAndRefusedAreNot) {
  port_.Deliver(kInputsReported);
  port_.Deliver(kInputsSpoiled);
  port_.Deliver(kHiddenReported);
  EXPECT_THAT(Unsent(), ElementsAre(kInputLabels));
}

// The message is of three labels, and there is no station 3.
TEST_F(UnsentMessagesTest, LabelsThatWereStoredInPartAreNot) {
  model_.LabelCount = 3;
  database_.AddStation(4, {{"Label", "D"}, {"InLabel", "D"}, {"OptoStations", test::kNoFlags}});
  unsent_.Begin({});
  Edit(4, "Label", "E");
  port_.Deliver(
      "F9 14 41 20 20 20 20 20 20 20 42 20 20 20 20 20 20 20 43 20 20 20 20 20 20 20 7A FF");
  EXPECT_EQ(database_.Field(2, "Label"), "B");
  EXPECT_THAT(Unsent(), ElementsAre(kStationLabels));
}

TEST_F(UnsentMessagesTest, IsKeptFromRunToRunWithItsDay) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Edit(2, "B3 Type", 1);
  Send({Table::Inhibits, 1});
  Poll("EB");
  today_ = 22;
  Edit(1, "Inhibits", Inhibited(5));
  const std::string kept = WriteHeld(unsent_.Held());
  today_ = 23;
  unsent_.Begin(ReadHeld(kept));
  EXPECT_THAT(
      unsent_.Unsent(),
      ElementsAre(
          std::pair(TablePart{Table::Inhibits, 1},
                    Day(std::chrono::year(2026), std::chrono::November, std::chrono::day(22))),
          std::pair(TablePart{Table::Buttons, 2},
                    Day(std::chrono::year(2026), std::chrono::November, std::chrono::day(21)))));
  Edit(1, "Inhibits", Inhibited(3));
  Edit(2, "B3 Type", jet::Value());
  EXPECT_THAT(Unsent(), IsEmpty());
}

// The next run is to know what was sent by then; but nothing else is unsent than was before.
TEST_F(UnsentMessagesTest, ARunThatEndsInTheMiddleOfATableHasKeptWhatWasSentOfIt) {
  ConnectSwitcher();
  Edit(1, "Inhibits", Inhibited(3));
  Edit(2, "Inhibits", Inhibited(3));
  const int changed = changed_;
  Transmission table = senders_.Make({Table::Inhibits});
  ASSERT_TRUE(table.Step());
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 04 00 04 FF");
  EXPECT_THAT(kept_, StartsWith("inhibits 1 open "));
  EXPECT_THAT(kept_, HasSubstr("\ninhibits 2 found "));
  EXPECT_EQ(changed_, changed);
  Edit(1, "Inhibits", test::kNoFlags);
  Edit(2, "Inhibits", test::kNoFlags);
  unsent_.Begin(ReadHeld(kept_));
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

TEST_F(UnsentMessagesTest, WhatTheSwitcherHoldsIsSentOnceMoreWithoutAWord) {
  ConnectSwitcher();
  Send({Table::Inhibits, 1});
  Poll("EB");
  const int changed = changed_;
  Send({Table::Inhibits, 1});
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 00 00 00 FF ED F5 00 00 00 00 00 FF");
  EXPECT_EQ(kept_, "");
  EXPECT_EQ(changed_, changed);
}

TEST_F(UnsentMessagesTest, AMessageThatWasNotThereAtFirstIsUnsentUntilItIsSent) {
  ConnectSwitcher();
  database_.AddStation(3,
                       {{"Label", "Sta. 3"}, {"InLabel", "Inpt 3"}, {"Inhibits", test::kNoFlags}});
  EXPECT_THAT(Unsent(), IsEmpty()) << "nobody has told of it";
  Edit(3, "Inhibits", Inhibited(2));
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 3}));
  const std::string kept = WriteHeld(unsent_.Held());
  unsent_.Begin(ReadHeld(kept));
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 3})) << "in the next run, too";
  Send({Table::Inhibits, 3});
  EXPECT_EQ(port_.TakeWritten(), "F5 02 00 02 00 04 FF");
  Poll("EB");
  EXPECT_THAT(Unsent(), IsEmpty());
}

// A change of a station whose number cannot be read may be one of any.
TEST_F(UnsentMessagesTest, SoIsOneThatAChangeOfAnUnknownStationBringsToLight) {
  database_.AddStation(3,
                       {{"Label", "Sta. 3"}, {"InLabel", "Inpt 3"}, {"Inhibits", test::kNoFlags}});
  changes_.Announce({Origin::Backup, 0, {{"Inhibits", jet::Value(), jet::Value()}}});
  EXPECT_THAT(Unsent(), ElementsAre(TablePart{Table::Inhibits, 3}, TablePart{Table::Relays, 3}));
}

TEST_F(UnsentMessagesTest, AMessageWithoutARecordCannotBeSent) {
  Edit(2, "Inhibits", Inhibited(3));
  database_.Delete(2);
  unsent_.Begin(HeldMessages(unsent_.Held()));
  EXPECT_THAT(Unsent(), IsEmpty());
}

}  // namespace
}  // namespace switcher
