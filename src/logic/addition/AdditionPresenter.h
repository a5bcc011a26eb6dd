#pragma once

#include <array>
#include <optional>
#include <string>

#include "addition/AdditionForm.h"
#include "calibration/CalibrationState.h"
#include "core/StateOf.h"
#include "core/WorkingTable.h"

namespace kelvo {

/// The screens around an addition method, as its presenter uses them; the view implements it.
class AdditionView {
 public:
    virtual ~AdditionView() = default;
    /// Boxes, ticks, caption or comment have changed.
    virtual void ShowState() = 0;
    /// The reading dialog is loaded in its place and the link is started.
    virtual void OpenReading() = 0;
    /// The reading dialog is in front until a potential has been taken or given up.
    virtual void Read() = 0;
    /// The reading dialog is unloaded, the link stopped when it is open, the temperature boxes are white again.
    virtual void CloseReading() = 0;
    virtual void ShowTable() = 0;
    /// The sample number of the row just added.
    virtual void AskSampleNumber() = 0;
    virtual void ShowCalibrationSetup() = 0;
    /// The menu comes back and this screen is unloaded.
    virtual void GoToMenu() = 0;
    virtual void EndProgram() = 0;
    /// Whether the program has ended while a dialog was up.
    virtual bool Ended() const = 0;
};

/// One addition screen without its widgets: the form with its menus, files, table rows and on-line readings.
class AdditionPresenter : private AdditionClient {
 public:
    AdditionPresenter(StateOf<CalibrationState, const Paths, Navigation, TableState, const HardwareSettings,
                              ReadingSettings, StatusMessages>
                          state,
                      Prompts& prompts, FileChooser& files, const Clock& clock, WorkingTable& table,
                      const AdditionMethod& method, AdditionView& view)
        : state_(state),
          calibration_(state),
          navigation_(state),
          tableState_(state),
          reading_(state),
          status_(state),
          prompts_(prompts),
          files_(files),
          clock_(clock),
          table_(table),
          method_(method),
          view_(view),
          form_(state, prompts, clock, method, *this) {}

    AdditionForm& Form() { return form_; }
    const AdditionForm& Form() const { return form_; }
    const AdditionMethod& Method() const { return method_; }
    /// Title of the window: the method's, or that of the file last saved or opened.
    const std::string& Caption() const { return caption_; }
    /// "Keyboard Input" 0 and "On Line Reading" 1.
    bool Ticked(int i) const { return ticked_.at(static_cast<std::size_t>(i)); }
    /// Whether the rows of this screen can be printed.
    bool TablePrintOffered() const { return tablePrintOffered_; }
    /// What the last step has to say, for as long as the boxes stand as they were, and what the form has.
    std::string Status() const;

    void Load();

    // --- menus -------------------------------------------------------------------------------------------------
    void New();
    void OpenMeasurement();
    void OpenTable();
    void SaveMeasurement();
    void SaveTable();
    void ViewTable();
    void SaveRow() override;
    /// A row of several additions: the volumes added in all, the first and the last potential, the result.
    /// @return whether the row stands in the table
    bool SaveSeries(const SeriesOutcome& outcome);
    void SetAverage();
    /// "Close" and "Back".
    void Back();
    void Exit();
    /// Leaves as "Back" does where nothing but the boxes would be lost by it, else says what would.
    void Escape();

    // --- on line -----------------------------------------------------------------------------------------------
    /// A tick is clicked: one goes out with the other, and "On Line Reading" takes the two potentials.
    void Tick(int i, bool on);
    /// What the reading dialog asks for at present.
    std::string ReadingPrompt() const;
    /// Temperature against which the dialog judges that of the sample, °C as text.
    const std::string& CalibrationCelsius() const { return form_.Text(AdditionForm::CaliCelsius); }
    /// @param doubt  why the value is no live reading, empty when it is one
    void TakeReading(const std::string& millivolts, const std::string& doubt = {});
    void CancelReading() { calibration_.ReadingActive = false; }
    void ShowTemperature(const std::string& celsius, const std::string& fahrenheit);

    // --- the end of the session ----------------------------------------------------------------------------------
    /// Whether boxes have been filled that neither a file nor the question of leaving would bring back.
    bool HoldsUnsaved() const;
    /// The screen as the bytes of its file.
    std::string Bytes() const { return MethodDumpBytes(form_.Dump()); }

 private:
    void CalibrateFirst() override;
    void ShowNow() override { view_.ShowState(); }

    void ReadPotentials();
    bool ReadPotential(int box, const char* prompt);
    std::string Row(const std::array<std::string, AdditionForm::BoxCount>& texts);
    bool AddRow(const std::array<std::string, AdditionForm::BoxCount>& texts, const RowFacts& facts);
    /// Rows measured for another ion stand in the table.
    bool TableIsOfAnotherIon() const { return table_.RowCount() > 0 && tableIon_ && *tableIon_ != form_.IonName(); }
    /// Puts the table away with its question, so that the next row begins another one.
    void LeaveTable();
    void HandHeadOver();
    void Tell(std::string message);

    StateOf<CalibrationState, const Paths, Navigation, TableState, const HardwareSettings, ReadingSettings,
            StatusMessages>
        state_;
    CalibrationState& calibration_;
    Navigation& navigation_;
    TableState& tableState_;
    ReadingSettings& reading_;
    StatusMessages& status_;
    Prompts& prompts_;
    FileChooser& files_;
    const Clock& clock_;
    WorkingTable& table_;
    const AdditionMethod& method_;
    AdditionView& view_;
    AdditionForm form_;

    std::string caption_;
    std::array<bool, 2> ticked_{true, false};
    bool tablePrintOffered_ = false;
    std::optional<std::string> tableIon_;  ///< ion of the rows in the table, none before the first
    const char* prompt_ = "";
    std::string doubt_;               ///< why the reading just taken is none
    std::string saved_;               ///< bytes of the screen when it was saved or opened last
    std::string message_, toldWith_;  ///< what the last step said, and the screen as it stood then
};

}  // namespace kelvo
