#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/DisplayList.h"
#include "core/Tables.h"

namespace kelvo {

/// Numbers of the screens, as `CloseSubScreen` and `ReturnScreen` use them. 5 belongs to no screen.
enum class ScreenCode : int {
    None = 0,
    fmISEcli = 1,
    fmpaidat = 2,
    frmacft = 3,
    frmcnvs = 4,
    frmDsply = 6,
    frmNorvak = 7,
    frmenu = 8,
    frmHware = 9,
    frminfo = 10,
    frminfo2 = 11,
    frmknosp = 12,
    frmMsg = 13,
    frmtxt = 14,
    frmPHMe = 15,
    frmPHSe = 16,
    frmPset = 17,
    frmPtset = 18,
    frmQSave = 19,
    frmselity = 20,
    frmsetup = 21,
    frmSampa = 22,
    frmStanad01 = 23,
    frmInput = 24,
    // Screens that no number of Kelvo names; the screen manager needs one all the same.
    frmPortSettings = 101,
    frmAutoD = 102,
    frmManual = 103,
    frmQuality = 104,
};

/// Sums over the calibration points, x = LogC, y = E; filled by `CollectSums`.
struct FitSums {
    double SumE = 0, SumE2 = 0, SumL = 0, SumL2 = 0, SumL4 = 0, SumEL = 0, SumEL2 = 0;
    float SumL3 = 0;
    double Syy = 0, Sxx = 0, Szz = 0, Sxy = 0, Szy = 0;
    float Sxz = 0;
};

/// Folders of the program's own and the analyst's files; each ends with '/'.
struct Paths {
    std::string AppPath;   ///< folder of the program's own files
    std::string DataPath;  ///< folder that file choosers open at
    std::string HelpPath;  ///< folder of the help texts and notes
    std::string ListPath;
    std::string JournalPath;  ///< the analyst's own data folder, where recordings without a file are kept
    std::string IniPath;      ///< AppPath + "KELVO.ini"
};

/// Size of the display and what a large screen takes of it.
struct Geometry {
    std::int16_t ScreenWidth = 12000, ScreenHeight = 9000;  ///< twips of the size chosen
    float ScreenScaleX = 0.95f, ScreenScaleY = 1.2f;
    float FormScale = 0.82f;  ///< fraction of the display that a large screen fills
};

/// Filled at the start; row 25 of the ions is the analyst's own.
struct ConstantTables {
    IonTable Ions = StandardIons();
    SensorTable Sensor = StandardSensor();
};

/// Where the analyst is and came from.
struct Navigation {
    std::int16_t pHMode = 0;     ///< -1 on the pH path, 0 on the ISE path
    std::int16_t HelpTopic = 0;  ///< 0 calibration ... 7 pH
    std::array<std::int16_t, 3> IsePath{};
    std::array<std::int16_t, 5> PhPath{};
    std::int16_t ReturnScreen = 0;        ///< ScreenCode of the working screen or sub-screen now open, 0 none
    int MenuBranch = 1;                   ///< branch that frmenu shows: 0 pH, 1 ISE, 2 utilities
    std::string NorvakCaption = "Start";  ///< caption of the button of frmNorvak
    bool MessageAtFont18 = true;          ///< fmISEcli shows its opening message in large type
    std::string HelpFile;                 ///< text file that the help sheet opens next; empty: the sheet of `HelpTopic`
    int HelpStep = -1;                    ///< step of the topic that it opens next; -1: as the marks of the paths say
    int SheetTopic = -1, SheetStep = 0;   ///< page of the first help sheet, for the second one
    ScreenCode HelpHost = ScreenCode::None;  ///< screen that the help sheet stands in front of
    bool LeaveForMenu = false;               ///< the help sheet was left for the menu, and its host is to follow
    std::string ManualPage;                  ///< page of the manual to open next, "manual.md#files"; empty: the first

    ScreenCode ReturnTo() const { return static_cast<ScreenCode>(ReturnScreen); }
    bool ReturnsTo(ScreenCode code) const { return ReturnTo() == code; }
    void SetReturn(ScreenCode code) { ReturnScreen = static_cast<std::int16_t>(code); }
};

/// The calibration in use: its points, what was fitted, how it is named.
struct IseCalibration {
    std::int16_t CaliPoints = 0;      ///< points now held, 0 none; they live at 1..CaliPoints
    std::vector<float> CaliE{0};      ///< mV
    std::vector<float> CaliLogC{0};   ///< log10 of mol/L
    std::vector<float> CaliPpm{0};    ///< ppm
    std::vector<float> CaliMolar{0};  ///< mol/L
    double CaliEo = 0;                ///< intercept, mV
    float CaliSlope = 0;              ///< mV per decade; 0 none known
    std::int16_t LinearFit = 0, PartlyLinearFit = 0, BestFitCurve = 0;  ///< at most one is 1
    float FitA = 0;                                                     ///< E = FitA·LogC² + FitB·LogC + FitC
    double FitB = 0, FitC = 0;
    kelvo::FitSums FitSums;
    std::int16_t MvScaleIndex = 0;    ///< 0 to 5
    std::int16_t LogCScaleIndex = 0;  ///< 0 to 3
    std::int16_t IonIndex = NoIon;    ///< 0 to 25, -1 none yet
    std::string CustomIon;            ///< name of row 25
    float CustomWeight = 0;           ///< g/mol of row 25
    std::int16_t CaliDirty = 0;       ///< 1: entered or changed and not saved
    float LastSlope = 0;              ///< slope rounded by "#0.00" when saved or opened; 0 none known
    std::string CaliTemp;             ///< working temperature, °C as text
    std::string PointTemp;            ///< temperature of the first point typed or read, °C as text
    std::string CaliFileName;         ///< file that holds these points, without its folder; empty: none
    std::int16_t CurrentPoint = 0;    ///< number of the point now being entered, from 1
    std::string CaliDate;             ///< date of the present setup
    std::array<std::array<std::string, 4>, 25> IonCali;  ///< last slope, temperature twice, date, by ion 0 to 24
    bool PairsCrossed = false;                           ///< sorting has given potentials the LogC of another point
    bool LineRefused = false;   ///< the points have no straight line: slope and intercept are of an earlier calibration
    bool CurveRefused = false;  ///< the points have no best-fit curve: its coefficients are of earlier points
};

/// What the calibration graph shows.
struct GraphState {
    DisplayList Graph;                 ///< what the calibration graph shows now
    float YRange = 500, YSpan = 6000;  ///< scale constants, filled by SetScaleConstants
    float XDecades = 4, XOrigin = 6450;
    std::int16_t SampleCount = 0;  ///< samples plotted, at most 101
    std::array<float, 101> SampleE{}, SampleLogC{};
};

/// An entry of points, or a reading, in progress.
struct EntryState {
    bool OnLine = false;  ///< points are read from the interface, not typed
    bool Cancelled = false;
    bool ReadingActive = false;              ///< false after Cancel in a point, slope or reading dialog
    std::string ReadingText;                 ///< box text on its way to and from the reading dialog
    std::int16_t PointRunning = 0;           ///< 1 while a stability wait runs
    std::string PointTitle, PointPrompt;     ///< title and prompt of the point dialog
    bool SensorWarned = false;               ///< the sensor message has been shown in this entry
    std::string KnownSlope, KnownSlopeTemp;  ///< boxes 0 and 1 of frmknosp, as they were left
};

/// Buffers of the two pH electrodes.
struct PhCalibration {
    std::array<std::int16_t, 3> BufferCount{};             ///< 1, 2: buffers of the electrode; 0: their sum
    std::array<std::string, 3> PhCaliDate;                 ///< 1, 2
    std::array<float, 3> PhCaliTemp{};                     ///< 1, 2: °C
    std::array<std::string, 3> PhCaliElectrode;            ///< 1, 2: serial number of the electrode calibrated
    std::vector<std::array<float, 3>> Buffers1, Buffers2;  ///< rows from 1: [1] pH, [2] mV
    bool PhCaliUnsaved = false;                            ///< it is in use, and no file holds it
};

/// One buffer on its way between the pH calibration and its dialog.
struct PhEntry {
    std::string PhCaption, PhPrompt;   ///< "Electrode 1", and what is to be done
    std::int16_t PhCancelled = 0;      ///< -1 after Cancel
    std::array<std::string, 4> txtph;  ///< boxes of the dialog as OK left them: pH, mV, °C, °F
};

/// What the setup of a continuous recording was left with, as rows of its lists, -1 none. On the ISE path the ticks
/// say nothing: the ISE is recorded.
struct RecordingChoices {
    int CmbTime = -1;            ///< interval: 0 to 8 for 2, 5, 10, 30 s, 1, 2, 5, 10, 30 min
    int cmbX = -1;               ///< period: 0 to 3 for 20, 50, 100, 200 points
    int cmbY = -1;               ///< range of the vertical axis
    std::array<bool, 2> chk1{};  ///< electrode 1 is recorded; with temperature compensation
    std::array<bool, 2> chk2{};  ///< the same of electrode 2
};

/// Whether rows exist and where they go.
struct TableState {
    static constexpr const char* Declined = "-999";

    std::int16_t QuickCount = 0;
    std::int16_t TableOpen = 0;        ///< 1: rows exist
    std::string TableFile;             ///< empty: not asked yet, `Declined`: the analyst declined a file
    std::int16_t OpenCancelled = 0;    ///< 1: the file dialog of the last table open was cancelled
    std::int16_t HideTableOnBack = 0;  ///< -1: "Back" of the table screen only hides it
    std::int16_t ViewOnly = 0;         ///< 1: the recording screen shows a file and records nothing

    /// Whether rows have a file to go to.
    bool HasTableFile() const { return !TableFile.empty() && TableFile != Declined; }
};

/// What is connected and who measures, as KELVO.ini has it.
struct HardwareSettings {
    std::string Operator;
    std::array<std::string, 2> RefElectrode;  ///< type, serial number
    std::array<std::string, 3> ElectrodeNum;  ///< serial numbers: ISE, pH 1, pH 2
    std::string ISAB;
    std::int16_t DateFormat = 0;             ///< 0 day first, else month first
    std::array<std::int16_t, 5> Channel{};   ///< 0 pH 1, 1 ISE, 2 sensor 1, 3 pH 2, 4 sensor 2; 1 in use
    std::array<std::string, 3> Temperature;  ///< 1, 2: default °C of the two channels; 0 is never filled
    std::array<std::int16_t, 4> InputActive{};
    std::int16_t ActiveCount = 0;
    std::int16_t PortIndex = 0, HardwarePort = 1;
    std::int16_t NetworkPrinter = 0;
    std::int16_t InterfaceKind = 2, SensorCount = 2;
};

/// The same items as stored with the calibration in use.
struct StoredWithCalibration {
    std::string FileOperator;
    std::array<std::string, 2> FileRefElectrode;
    std::array<std::string, 3> FileElectrodeNum;
    std::string FileTemp, FileDate;
};

/// The latest frame, and how readings are averaged and judged.
struct ReadingSettings {
    std::int16_t ASD = 1, ASDavg = 10, Waittime = 5, Preset = 30;
    float Threshold = 0;
    std::int16_t ReadAvg = 1;        ///< readings averaged
    std::array<float, 5> Reading{};  ///< latest frame: electrode 1 mV, sensor 1, electrode 2 mV, sensor 2
};

/// Quiet lines on their way to the next screen.
struct StatusMessages {
    std::string StatusMessage;  ///< a quiet line that the next screen's status bar takes up
};

/// The one working state of the process, a group of fields for each subject: a screen or presenter has the whole, a
/// function takes the group that it needs. There is no global instance; RunProgram makes one and hands it on, a
/// test makes a fresh one.
struct AppState : Paths,
                  Geometry,
                  ConstantTables,
                  Navigation,
                  IseCalibration,
                  GraphState,
                  EntryState,
                  PhCalibration,
                  PhEntry,
                  RecordingChoices,
                  TableState,
                  HardwareSettings,
                  StoredWithCalibration,
                  ReadingSettings,
                  StatusMessages {};

/// Clears the marks of both paths, as every Back does.
void ClearPaths(AppState& state);

}  // namespace kelvo
