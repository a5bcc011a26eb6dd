#pragma once

#include <string>

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/CalibrationContext.h"
#include "core/NotedTable.h"
#include "support/Scripted.h"
#include "text/Number.h"

namespace kelvo::test {

/// Screens, table and link that write down what they are asked, in one line.
struct CalibrationLog {
    void Add(const std::string& what) { text += (text.empty() ? "" : ",") + what; }
    std::string Take() { return std::exchange(text, {}); }
    std::string text;
};

class LoggedScreens : public ScreenNavigator {
 public:
    explicit LoggedScreens(CalibrationLog& log) : log_(log) {}
    bool Knows(ScreenCode) const override { return true; }
    bool IsLoaded(ScreenCode code) const override { return code == loaded; }
    bool IsShown(ScreenCode code) const override { return code == loaded; }
    void Present(ScreenCode code) override { Log("present", code); }
    void Show(ScreenCode code) override { Log("show", code); }
    void ShowModal(ScreenCode code) override {
        Log("modal", code);
        if (onModal) onModal(code);
    }
    void Hide(ScreenCode code) override { Log("hide", code); }
    void Close(ScreenCode code) override { Log("close", code); }
    void CloseSubScreen(int code) override { Log("sub", static_cast<ScreenCode>(code)); }
    void EndProgram(int) override { log_.Add("end"); }
    using ScreenNavigator::EndProgram;
    bool Ended() const override { return ended; }

    ScreenCode loaded = ScreenCode::None;
    bool ended = false;
    std::function<void(ScreenCode)> onModal;

 private:
    void Log(const char* what, ScreenCode code) { log_.Add(what + Str(static_cast<int>(code))); }
    CalibrationLog& log_;
};

class LoggedTable : public NotedTable {
 public:
    LoggedTable(CalibrationLog& log, AppState& state) : NotedTable(state), log_(log) {}
    void AddRow(const std::string& row, const RowFacts& known = {}) override {
        NotedTable::AddRow(row, known);
        log_.Add("row");
    }
    bool AskFile(const TableFileRequest&) override { return true; }
    SaveOutcome KeepRows() override { return log_.Add("keep"), outcome; }
    SaveOutcome Save() override { return log_.Add("save"), outcome; }
    void Prompt(const std::string& question) override { log_.Add(question); }
    void Leave(const std::string& question) override {
        log_.Add(question == "Would you like to save the data table?" ? "ask" : question);
    }
    void Unload() override { log_.Add("unload"); }
    bool LookAtFile() override { return false; }

    SaveOutcome outcome = SaveOutcome::Saved;

 private:
    CalibrationLog& log_;
};

class LoggedLink : public LinkSwitch {
 public:
    explicit LoggedLink(CalibrationLog& log) : log_(log) {}
    void StartLink() override { open = true, log_.Add("start"); }
    void StopLink() override { open = false, log_.Add("stop"); }
    bool PortOpen() const override { return open; }
    bool open = false;

 private:
    CalibrationLog& log_;
};

/// A window that only remembers its status line and how often it was shown.
class StatusView : public CalibrationView {
 public:
    void ShowAll() override { ++shown; }
    void ShowSamples() override {}
    void ShowStatusLines(const std::string& lasts, const std::string& message) override {
        lasting = lasts;
        status = message;
    }
    void PlaceReadingDialog() override {}
    std::string lasting, status;
    int shown = 0;
};

/// A fluoride calibration of four points in use, and all that its presenters work with.
struct CalibrationBench {
    CalibrationLog log;
    AppState state = FluorideState();
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    LoggedScreens screens{log};
    LoggedTable table{log, state};
    LoggedLink link{log};
    StatusView view;
    CalibrationContext context{{state}, prompts, files, clock, screens, table, &link};
};

}  // namespace kelvo::test
