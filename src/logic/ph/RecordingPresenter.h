#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/Clock.h"
#include "core/DisplayList.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "core/UnsavedWork.h"
#include "core/WorkingTable.h"
#include "ph/RecordingGraph.h"
#include "ph/RecordingKeeper.h"
#include "ph/RecordingRun.h"
#include "ph/RecordingSchedule.h"

namespace kelvo {

class FileChooser;
class Prompts;

/// The table file that is looked at.
struct LookedAtFile {
    std::string name;  ///< without its folder
    std::string date;  ///< of the experiment, as its head has it
    std::string ion;   ///< as its head has it
};

/// What a recording asks of the screens and devices around it.
class RecordingHost {
 public:
    virtual ~RecordingHost() = default;
    /// Closes the recording screen and shows the setup, the menu.
    virtual void ShowSetup() = 0;
    virtual void ShowMenu() = 0;
    virtual void ShowTable() = 0;
    virtual void EndProgram() = 0;
    virtual void StopLink() = 0;
    virtual LookedAtFile FileLookedAt() const = 0;
    /// Whether the program is ending: a question then has not been answered by the analyst.
    virtual bool Ending() const = 0;
};

/// What the recording screen shows.
struct RecordingFace {
    std::string caption = "pH Recording";
    std::array<std::string, 5> txtTT;     ///< data number, electrode 1, electrode 2, elapsed time, interval
    std::array<std::string, 5> labtitle;  ///< their captions
    std::array<bool, 2> doubtful{};       ///< the value of the electrode is of an old frame: shown greyed
    std::string lblScale, Label3;
    bool hint = false;      ///< `Label3` is in sight
    bool times = true;      ///< `txtTT(3)` and `txtTT(4)` are in sight
    bool secondBox = true;  ///< so is the box of electrode 2
    bool busy = false;      ///< the busy cursor is on
    bool mnuF = true, mnuStart = false, mnuStop = false;
    std::array<const char*, 5> mnupH{};  ///< captions of the ranges; null: there is no such entry
    int scaleIndex = -1;
    bool wholeFile = false;  ///< a file shown in part can be shown whole
    std::string live;        ///< what is measured now, and what comes next; empty when nothing is recorded
    std::string status;
};

/// The screen of continuous recording, `frmPHMe`, without its widgets: the run and its states, the live file, viewing
/// of a saved recording, the questions on leaving. The clock and the moment of each tick are handed in.
///
/// Whoever shows it calls `Tick` when `NextTick` has come, as long as it is `Ticking`, and after each tick that leaves
/// a `Trouble` calls `TellTroubles` from outside the tick, so that no box holds the next sample.
class RecordingPresenter {
 public:
    enum class State { Idle, Running, Stopped, Complete, Viewing };

    RecordingPresenter(StateOf<CalibrationState, const Paths, Navigation, const PhCalibration, TableState,
                               const HardwareSettings, ReadingSettings>
                           state,
                       Prompts& prompts, FileChooser& files, const Clock& clock, WorkingTable& table,
                       RecordingHost& host, RecordingInputs inputs);

    /// The screen opens. With `ViewOnly` 1 a file is asked for and shown, else the plan is run.
    void Load(const RecordingPlan& plan);

    bool Ticking() const { return schedule_.Running(); }
    double NextTick() const { return schedule_.NextTick(); }
    /// @return whether a point was due
    bool Tick();
    /// Brings `Face().live` up to date, once a second.
    void ShowLive();
    bool Trouble() const { return !troubles_.empty(); }
    void TellTroubles();

    void Stop();
    void Restart();
    void ChangeScale(int index);
    /// The analyst types in the data number box: for some seconds no sample takes the text away.
    void NumberTyped(const std::string& text);
    void NumberEntered(const std::string& text);
    void ToggleHint();
    void ShowWholeFile();
    void Average();
    void ViewTable();
    /// Fills the table with what stands, for viewing, printing, saving.
    void FillTable();

    void New();
    void Open();
    void Back();
    void Exit();

    /// The recording when neither its live file nor the journal holds it whole, for an end of the program.
    std::vector<UnsavedPiece> Unsaved() const;

    const RecordingFace& Face() const { return face_; }
    const DisplayList& Graph() const { return graph_; }
    const RecordingRun& Run() const { return run_; }
    State Now() const { return now_; }
    /// Head of the printed graph, and the last values below it.
    std::string PrintTitle() const;
    std::vector<std::string> LastValues() const;
    /// Name for an exported picture, without extension.
    std::string PictureName() const;

 private:
    RecordingKind Kind() const { return navigation_.pHMode != 0 ? RecordingKind::Ph : RecordingKind::Ise; }
    void SetLabels();
    void SetLabelsOfFile();
    void AskSaveWhileRecording();
    void BeginRun(const RecordingPlan& plan);
    bool LoadFile();
    void ShowFile();
    void ShowCells(int pointCount);
    void KeepPoint(int n);
    void NoteKeeping();
    RecordingKeeper::End SettleData();
    void LetGo(RecordingKeeper::End end);
    void Finish();
    bool AskUntilSaved();
    void Leave();
    void ShowState(State now);
    void ShowPoint(int n);
    void ShowStatus();
    void Redraw();
    std::string FileRemarks() const;
    std::string KeepingRemarks() const;
    std::string PointsRemarks() const;
    std::string SensorRemarks(int electrode) const;
    std::string PointRemark(int n) const;
    std::string LiveFile() const;

    StateOf<CalibrationState, const Paths, Navigation, const PhCalibration, TableState, const HardwareSettings,
            ReadingSettings>
        state_;
    CalibrationState& calibration_;
    Navigation& navigation_;
    TableState& tableState_;
    const HardwareSettings& hardware_;
    Prompts& prompts_;
    FileChooser& files_;
    const Clock& clock_;
    WorkingTable& table_;
    RecordingHost& host_;
    RecordingInputs inputs_;

    RecordingRun run_;
    RecordingSchedule schedule_;
    RecordingKeeper keeper_;
    RecordingFace face_;
    DisplayList graph_;
    State now_ = State::Idle;
    ElapsedTime elapsed_;
    DateTime started_;
    std::array<std::string, 2> doubts_;  ///< what the calibrations leave in doubt, as they were at the start
    double slept_ = 0;                   ///< what the machine had slept at the point before
    bool telling_ = false;               ///< a box with a trouble stands
    std::string changed_;                ///< the live file was changed elsewhere, in words
    double typedAt_ = -1e9;              ///< when the data number was last typed at
    bool finishing_ = false;             ///< a question on leaving stands; the run goes on behind it
    std::string lookedUp_;               ///< remark on the point last asked for
    std::vector<std::string> troubles_;
    std::vector<std::string> fileRows_;  ///< rows of the file viewed, as they stand in it
    std::vector<RowFacts> fileFacts_;
    std::vector<RecordingCells> fileCells_;
    bool strangeFile_ = false;  ///< the table last read a file that is not the one viewed
};

}  // namespace kelvo
