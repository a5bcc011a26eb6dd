#include "calibration/TableName.h"

#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

const std::string Replace = "   This file already exists, would you like to replace it?";

struct Question {
    explicit Question(bool save = true) {
        state.DataPath = folder.Path();
        prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", save);
    }
    bool Ask() { return AskTableFile(state, prompts, files); }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
};

TEST(TableName, NamesAreCompleted) {
    const char* const rows[][2] = {
        {"run1", "RUN1.TAB"}, {"run1.txt", "RUN1.TXT"}, {"räume", "RÄUME.TAB"}, {"a.b/run1", "a.b/RUN1.TAB"}};
    for (const auto& [typed, name] : rows) {
        Question q;
        q.files.Expect(q.folder / typed);
        EXPECT_TRUE(q.Ask()) << typed;
        EXPECT_EQ(q.state.TableFile, q.folder / name);
    }
}

TEST(TableName, AnExistingFileIsAskedAbout) {
    Question q;
    q.folder.Put("run1.tab", "old");
    q.folder.Put("RUN2.TAB", "old");
    q.files.Expect(q.folder / "run2");
    q.prompts.ExpectAsk(q.folder / "RUN2.TAB" + Replace, false);
    q.files.Expect(q.folder / "run1");
    q.prompts.ExpectAsk(q.folder / "RUN1.TAB" + Replace, true);
    EXPECT_TRUE(q.Ask() && q.prompts.lastDefaultNo) << "Enter must not destroy";
    EXPECT_EQ(q.state.TableFile, q.folder / "run1.tab") << "the file keeps the name it has";
    Question declined(false);
    EXPECT_TRUE(declined.Ask());
    EXPECT_EQ(declined.state.TableFile, "-999");
}

}  // namespace
}  // namespace kelvo::test
