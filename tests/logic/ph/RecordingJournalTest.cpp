#include "ph/RecordingJournal.h"

#include <filesystem>

#include "core/Clock.h"
#include "ph/RecordingFixture.h"
#include "ph/RecordingKeeper.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

const std::string Head = "Electrode 1 :\r\n\tNo.\tTime\r\n";

class RecordingJournalTest : public RecordingFixture {
 protected:
    const std::string own = folder / "own/";
    std::string Kept() { return std::to_string(FindKeptRecordings(own).size()); }
    /// A journal that a program has left behind.
    void Leave(const std::string& name, const std::string& content) { folder.Put("own/" + name, content); }
};

TEST_F(RecordingJournalTest, KeepsRowsUntilTheRecordingIsSafe) {
    RecordingJournal journal(own);
    journal.Begin(RecordingKind::Ph, clock.now, Head);
    EXPECT_EQ(Kept(), "0") << "an empty journal is held by its program all the same";
    journal.Add("1\t0\t09:05:07\r\n");
    journal.Add("2\t1\t09:05:09\r\n");
    EXPECT_EQ(Kept(), "0") << "a running program holds it";
    std::filesystem::remove_all(own);
    journal.Add("3\t2\t09:05:11\r\n");
    EXPECT_EQ(Kept(), "0") << "made anew it is held as well";
    {
        RecordingJournal other(own);
        DateTime earlier = clock.now;
        earlier.hour = 8;
        other.Begin(RecordingKind::Ise, earlier, "x\r\n\tSample Number\tTime\r\n1\r\n");
    }
    const auto found = FindKeptRecordings(own);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(KeptRecordingQuestion(found[0], 1),
              "An ISE recording of 11/25/2026 08:05 with 1 point was not saved. Keep it?");
    journal.Forget();
    EXPECT_FALSE(journal.Active());
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"own"});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own), {}), 1);
}

TEST_F(RecordingJournalTest, WhatIsOfferedAtTheNextStart) {
    std::filesystem::create_directories(own);
    const std::string rows = Head + "1\t0\t21:30:02\r\n2\t1\t21:30:04\r\n";
    Leave("recording-ph-20261125-213000-7.journal", rows + "3\t2\t21:3");
    Leave("recording-ph-20261124-213000-7.journal", rows);
    Leave("recording-ise-20261126-070000-8.journal", "Operator\r\n\tSample Number\tTime\r\n1\tF - 0\r\n");
    Leave("recording-ph-20261127-213000-7.journal", Head + "1\t0");
    Leave("recording-ph-20261128-213000-7.journal", "");
    Leave("recording-xy-1.journal", rows);
    Leave("remark.txt", rows);
    state.DataPath = folder.Path();

    prompts.ExpectAskToSave("A pH recording of 24/11/2026 21:30 with 2 points was not saved. Keep it?", false);
    prompts.ExpectAskToSave("A pH recording of 25/11/2026 21:30 with 2 points was not saved. Keep it?", true);
    folder.Put("TAKEN.phc", "old");
    files.Expect(folder / "TAKEN.phc");
    prompts.ExpectReplace(folder / "TAKEN.phc", false);
    files.Expect(folder / "none/NIGHT");
    prompts.ExpectMessage("Error76Saving" + (folder / "none/NIGHT.phc") + ":Path not found.");
    files.Expect(folder / "NIGHT");
    const std::string ise = "An ISE recording of 26/11/2026 07:00 with 1 point was not saved. Keep it?";
    prompts.ExpectAskToSave(ise, true);
    files.Expect(std::nullopt);
    const auto all = [] { return false; };
    OfferKeptRecordings(state, own, prompts, files, all);
    EXPECT_EQ(folder.Get("NIGHT.phc"), rows) << "the torn row is cut off";
    EXPECT_EQ(files.last.initialName, "ISE20261126-0700.tab");

    prompts.ExpectAskToSave(ise, false);
    OfferKeptRecordings(state, own, prompts, files, [] { return true; });
    prompts.ExpectAskToSave(ise, true);
    files.Expect(folder / "DAY.tab");
    OfferKeptRecordings(state, own, prompts, files, all);
    EXPECT_EQ(Kept(), "0");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own), {}), 3)
        << "strange files stay, and what is aside";

    Leave("recording-ph-20261129-213000-9.journal", rows);
    folder.Put("KEPT20261129-220000.PHC", rows + "3\t2\t21:30:06\r\n");
    OfferKeptRecordings(state, own, prompts, files, all, {folder.Path()});
    EXPECT_EQ(Kept(), "0") << "the fuller one has been told of";
}

TEST_F(RecordingJournalTest, ADeclinedOneCanBeBroughtBackForThirtyDays) {
    std::filesystem::create_directories(own + "put-aside");
    Leave("recording-ph-20261124-213000-7.journal", Head + "1\t0\t21:30:02\r\n");
    Leave("recording-ph-20261124-213000-7.journal.rows", "facts\n");
    prompts.ExpectAskToSave("A pH recording of 24/11/2026 21:30 with 1 point was not saved. Keep it?", false);
    OfferKeptRecordings(state, own, prompts, files, [] { return false; });
    auto aside = RecordingsPutAside(own);
    ASSERT_EQ(Joined(Kept(), aside.size()), "0|1");
    EXPECT_EQ(PutAsideCaption(aside[0], 0), "pH, 24/11/2026 21:30, 1 point");
    files.Expect(std::nullopt);
    EXPECT_FALSE(BringBack(state, aside[0], prompts, files));
    const auto age = [&](int days) {
        std::filesystem::last_write_time(aside[0].path,
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * days));
        return RecordingsPutAside(own).size();
    };
    EXPECT_EQ(age(29), 1u);
    files.Expect(folder / "BACK");
    EXPECT_TRUE(BringBack(state, aside[0], prompts, files));
    EXPECT_EQ(Joined(folder.Get("BACK.phc"), folder.Get("BACK.phc.rows"), RecordingsPutAside(own).size()),
              Head + "1\t0\t21:30:02\r\n|facts\n|0");
    Leave("put-aside/" + std::filesystem::path(aside[0].path).filename().string(), Head + "1\t0\r\n");
    EXPECT_EQ(age(31), 0u);
}

class RecordingKeeperTest : public RecordingFixture {
 protected:
    void Begin(const std::string& live) { keeper.Begin(RecordingKind::Ph, clock.now, live, Head); }
    std::size_t Journals() const {
        std::error_code none;
        const std::filesystem::directory_iterator entries(folder / "own/", none);
        return none ? 0 : static_cast<std::size_t>(std::distance(entries, {}));
    }
    std::string Failure() {
        const auto failure = keeper.TakeFailure();
        return failure ? std::to_string(failure->error.Code()) + failure->file : "";
    }
    RecordingKeeper keeper{folder / "own/"};
};

TEST_F(RecordingKeeperTest, ALiveFileThatFailsIsToldOnceAndCaughtUpWith) {
    const std::string path = folder / "disk/RUN.PHC";
    std::filesystem::create_directory(folder / "disk");
    Begin(path);
    keeper.Add("1\tµ");
    EXPECT_EQ(folder.Get("disk/RUN.PHC"), Head + "1\t\xB5\r\n");
    EXPECT_EQ(Journals(), 0u) << "a live file needs no journal";
    std::filesystem::rename(folder / "disk", folder / "taken-out");
    keeper.Add("2");
    EXPECT_EQ(Failure(), "76" + path);
    keeper.Add("3");
    EXPECT_EQ(Failure(), "") << "once";
    EXPECT_TRUE(keeper.Waiting() == 2 && keeper.Safe() && Journals() == 1) << "the journal keeps them meanwhile";
    std::filesystem::rename(folder / "taken-out", folder / "disk");
    keeper.Flush();
    EXPECT_EQ(folder.Get("disk/RUN.PHC"), Head + "1\t\xB5\r\n2\r\n3\r\n");
    EXPECT_TRUE(keeper.LiveWhole() && keeper.Waiting() == 0 && Journals() == 0);
    std::filesystem::remove_all(folder / "disk");
    keeper.Add("4");
    EXPECT_EQ(Failure(), "76" + path) << "a new failure is told again";
}

}  // namespace
}  // namespace kelvo::test
