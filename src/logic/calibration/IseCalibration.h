#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelvo {

/// Sums over the calibration points, x = LogC, y = E; filled by `CollectSums`.
struct FitSums {
    double SumE = 0, SumE2 = 0, SumL = 0, SumL2 = 0, SumL4 = 0, SumEL = 0, SumEL2 = 0;
    float SumL3 = 0;
    double Syy = 0, Sxx = 0, Szz = 0, Sxy = 0, Szy = 0;
    float Sxz = 0;
};

/// A standard that was measured and does not count.
struct LeftOutStandard {
    int place = 0;  ///< among all standards, from 1
    float mv = 0, logC = 0, ppm = 0, molar = 0;
    std::string reason;
    bool operator==(const LeftOutStandard&) const = default;
};

/// What is told of the standards that the calibration's own file has no room for. Texts as typed; any may be empty.
struct StandardsTold {
    std::string relativeU;  ///< standard uncertainty of stock and volumes, % of every concentration
    std::string lot, expires;
    std::string blanks;  ///< potentials of blanks, mV, between blanks
    bool operator==(const StandardsTold&) const = default;
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
    std::int16_t LinearFit = 0, PartlyLinearFit = 0, BestFitCurve = 0, LowEndCurve = 0;  ///< at most one is 1
    float FitA = 0;  ///< E = FitA·LogC² + FitB·LogC + FitC
    double FitB = 0, FitC = 0;
    kelvo::FitSums FitSums;
    std::int16_t MvScaleIndex = 0;    ///< 0 to 5
    std::int16_t LogCScaleIndex = 0;  ///< 0 to 3
    std::int16_t CaliDirty = 0;       ///< 1: entered or changed and not saved
    float LastSlope = 0;              ///< slope rounded by "#0.00" when saved or opened; 0 none known
    std::string PointTemp;            ///< temperature of the first point typed or read, °C as text
    std::string CaliFileName;         ///< file that holds these points, without its folder; empty: none
    std::string CaliFilePath;         ///< the same with its folder
    std::string FileCheck;            ///< check of its bytes (`core/FactsFile`)
    std::string BesideCheck;          ///< the same of the file of facts beside it; empty: there was none
    std::vector<LeftOutStandard> LeftOut;
    StandardsTold Told;
    std::string SavedCurve;         ///< curve of results that its file was saved with; empty: the straight line
    std::string FactsRemark;        ///< what is to be told of the file beside `CaliFileName`; empty: nothing
    std::int16_t CurrentPoint = 0;  ///< number of the point now being entered, from 1
    std::string CaliDate;           ///< date of the present setup
    bool PairsCrossed = false;      ///< sorting has given potentials the LogC of another point
    bool LineRefused = false;   ///< the points have no straight line: slope and intercept are of an earlier calibration
    bool CurveRefused = false;  ///< the points have no best-fit curve: its coefficients are of earlier points
};

}  // namespace kelvo
