#pragma once

#include <string>

#include "calibration/CaliTestPoints.h"
#include "calibration/CalibrationContext.h"
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

class LoggedTable : public WorkingTable {
 public:
    explicit LoggedTable(CalibrationLog& log) : log_(log) {}
    void SetMethodHead(const MethodHead&) override {}
    int RowCount() const override { return static_cast<int>(rows.size()); }
    std::string NextRowNumber() override { return Str(RowCount() + 1); }
    void AddRow(const std::string& row, const RowFacts& known = {}) override {
        rows.push_back(row), facts.push_back(known);
        log_.Add("row");
    }
    void DropRow() override { rows.pop_back(), facts.pop_back(); }
    void FillRows(std::vector<std::string>, std::vector<RowFacts>) override {}
    bool AskFile(const TableFileRequest&) override { return true; }
    SaveOutcome KeepRows() override {
        log_.Add("keep");
        return outcome;
    }
    SaveOutcome Save() override {
        log_.Add("save");
        return outcome;
    }
    void Prompt(const std::string& question) override { log_.Add(question); }
    void Leave(const std::string& question) override {
        log_.Add(question == "Would you like to save the data table?" ? "ask" : question);
    }
    void Unload() override { log_.Add("unload"); }
    std::string LiveHead() override { return {}; }
    bool LookAtFile() override { return looksAtFile; }
    std::vector<std::string> RowsLookedAt() const override { return {}; }
    std::vector<RowFacts> FactsLookedAt() const override { return {}; }

    SaveOutcome outcome = SaveOutcome::Saved;
    bool looksAtFile = false;
    std::vector<std::string> rows;
    std::vector<RowFacts> facts;

 private:
    CalibrationLog& log_;
};

class LoggedLink : public LinkSwitch {
 public:
    explicit LoggedLink(CalibrationLog& log) : log_(log) {}
    void StartLink() override {
        open = true;
        log_.Add("start");
    }
    void StopLink() override {
        open = false;
        log_.Add("stop");
    }
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
    LoggedTable table{log};
    LoggedLink link{log};
    StatusView view;
    CalibrationContext context{state, prompts, files, clock, screens, table, &link};
};

}  // namespace kelvo::test
