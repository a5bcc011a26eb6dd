#pragma once

#include <functional>

#include "app/AppState.h"
#include "core/Dialogs.h"
#include "core/WorkingTable.h"
#include "support/Joined.h"

namespace kelvo::test {

/// A working table of texts: notes what is asked of it, answers from its fields.
class NotedTable : public WorkingTable {
 public:
    explicit NotedTable(AppState& state) : state_(state) {}
    void SetMethodHead(const MethodHead& h) override { head = Joined(h.Date, h.Slope, h.Celsius, h.Fahrenheit, h.Ion); }
    int RowCount() const override { return static_cast<int>(rows.size()); }
    std::string NextRowNumber() override { return " " + std::to_string(rows.size() + 1); }
    void AddRow(const std::string& row, const RowFacts& known = {}) override {
        rows.push_back(row), facts.push_back(known), state_.TableOpen = 1;
    }
    void DropRow() override { rows.pop_back(), facts.pop_back(); }
    void FillRows(std::vector<std::string> fresh, std::vector<RowFacts> known = {}) override {
        rows = std::move(fresh), facts = std::move(known);
    }
    bool AskFile(const TableFileRequest& r) override {
        calls += "ask ";
        asked = Joined(r.question != nullptr ? r.question : "at once", r.filter, r.pattern, r.extension);
        if (!fileToChoose.empty()) state_.TableFile = fileToChoose;
        return !fileToChoose.empty();
    }
    SaveOutcome KeepRows() override { return calls += "keep ", SaveOutcome::Saved; }
    SaveOutcome Save() override {
        calls += "save ";
        if (whileSaving) whileSaving();
        saved = rows;
        const SaveOutcome outcome = saves.empty() ? SaveOutcome::Saved : saves.front();
        if (!saves.empty()) saves.erase(saves.begin());
        return outcome;
    }
    void Prompt(const std::string&) override { calls += "prompt "; }
    void Leave(const std::string&) override { calls += state_.CaliDirty != 0 ? "leave (dirty) " : "leave "; }
    void Unload() override { rows.clear(), calls += "unload " + std::to_string(state_.ReturnScreen) + " "; }
    std::string LiveHead() override { return "Electrode 1 :\r\n\tNo.\tTime\r\n"; }
    bool LookAtFile() override { return fileChosen; }
    std::vector<std::string> RowsLookedAt() const override { return fileRows; }
    std::vector<RowFacts> FactsLookedAt() const override { return fileFacts; }

    std::vector<std::string> rows, saved, fileRows;
    std::vector<RowFacts> facts, fileFacts;
    std::string calls, asked, head;
    std::string fileToChoose;        ///< none is a cancel
    std::vector<SaveOutcome> saves;  ///< of each Save; Saved when none is left
    std::function<void()> whileSaving;
    bool fileChosen = true;

 private:
    AppState& state_;
};

}  // namespace kelvo::test
