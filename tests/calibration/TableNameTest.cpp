#include "calibration/TableName.h"

#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

const char* const WouldSave = "Would you like to save your data in a file while you are measuring";
const char* const Replace = "   This file already exists, would you like to replace it?";

struct Question {
    Question() { state.DataPath = folder.Path(); }
    bool Ask() { return AskTableFile(state, prompts, files); }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
};

TEST(TableName, NamesAreCompleted) {
    const char* const rows[][2] = {{"run1", "RUN1.TAB"}, {"run1.tab", "RUN1.TAB"}, {"run1.txt", "RUN1.TXT"},
                                   {"run1.", "RUN1."},   {"räume", "RÄUME.TAB"},   {"a.b/run1", "a.b/RUN1.TAB"}};
    for (const auto& [typed, name] : rows) {
        Question q;
        q.prompts.ExpectAsk(WouldSave, true);
        q.files.Expect(q.folder / typed);
        EXPECT_TRUE(q.Ask()) << typed;
        EXPECT_EQ(q.state.TableFile, q.folder / name);
        EXPECT_EQ(q.files.last.filter, "All Data(*.Tab)|*.Tab");
        EXPECT_EQ(q.files.last.directory, q.folder.Path());
        EXPECT_EQ(q.files.last.initialName, "*.TAB");
    }
}

TEST(TableName, AnExistingFileIsAskedAbout) {
    Question q;
    q.folder.Put("run1.tab", "old");
    q.folder.Put("RUN2.TAB", "old");
    q.prompts.ExpectAsk(WouldSave, true);
    q.files.Expect(q.folder / "run2");
    q.prompts.ExpectAsk(q.folder / "RUN2.TAB" + Replace, false);
    q.files.Expect(q.folder / "run1");
    q.prompts.ExpectAsk(q.folder / "RUN1.TAB" + Replace, true);
    EXPECT_TRUE(q.Ask());
    EXPECT_TRUE(q.prompts.lastDefaultNo) << "Enter must not destroy";
    EXPECT_EQ(q.state.TableFile, q.folder / "run1.tab") << "the file keeps the name it has";
    EXPECT_EQ(q.folder.Get("run1.tab"), "old") << "asking writes nothing";
}

TEST(TableName, NoFile) {
    Question declined;
    declined.prompts.ExpectAsk(WouldSave, false);
    EXPECT_TRUE(declined.Ask());
    EXPECT_EQ(declined.state.TableFile, "-999");
    for (const auto& chosen : {std::optional<std::string>(), std::optional<std::string>("")}) {
        Question q;
        q.prompts.ExpectAsk(WouldSave, true);
        q.files.Expect(chosen);
        EXPECT_FALSE(q.Ask());
        EXPECT_EQ(q.state.TableFile, "");
    }
    Question second;
    second.folder.Put("RUN2.TAB", "old");
    second.prompts.ExpectAsk(WouldSave, true);
    second.files.Expect(second.folder / "run2.tab");
    second.prompts.ExpectAsk(second.folder / "RUN2.TAB" + Replace, false);
    second.files.Expect(std::nullopt);
    EXPECT_FALSE(second.Ask());
    EXPECT_EQ(second.state.TableFile, "") << "a name that was declined is none";
}

}  // namespace
}  // namespace kelvo::test
