#include "calibration/CalibrationFacts.h"

#include <utility>
#include <vector>

#include "calibration/CalibrationStandards.h"
#include "calibration/CalibrationState.h"
#include "calibration/SampleUncertainty.h"
#include "core/FactsFile.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Names of facts of a calibration; a left-out standard has `fact::Struck`.
constexpr const char *Expires = "expires", *Blanks = "blanks", *Curve = "curve";

/// Of the whole file; empty where there is none.
std::string CheckOf(const std::string& bytes) {
    return bytes.empty() ? bytes : FactsCheck(bytes);
}

std::string CurveIn(const IseCalibration& calibration) {
    if (calibration.PartlyLinearFit == 1) return NameOf(ResultCurve::Kind::Segments);
    if (calibration.BestFitCurve == 1) return NameOf(ResultCurve::Kind::BestFit);
    return calibration.LowEndCurve == 1 ? NameOf(ResultCurve::Kind::LowEnd) : std::string();
}

RowFacts FactsOfCalibration(const IseCalibration& calibration) {
    RowFacts facts;
    facts.Set(fact::StandardsU, Trim(calibration.Told.relativeU));
    facts.Set(fact::Standards, calibration.Told.lot);
    facts.Set(Expires, calibration.Told.expires);
    facts.Set(Blanks, calibration.Told.blanks);
    facts.Set(Curve, CurveIn(calibration));
    return facts;
}

/// The calibration's own row.
void TakeOwn(IseCalibration& calibration, const RowFacts& facts) {
    StandardsTold told{facts.Get(fact::StandardsU), facts.Get(fact::Standards), facts.Get(Expires), facts.Get(Blanks)};
    if (WhyNotTold(told).empty()) calibration.Told = std::move(told);
    calibration.SavedCurve = facts.Get(Curve);
}

}  // namespace

std::string CalibrationFactsBytes(const IseCalibration& calibration, const std::string& name, std::string_view file) {
    const std::string check = FactsCheck(file);
    std::string bytes = EntryLine({0, check, FactsOfCalibration(calibration)});
    for (const LeftOutStandard& left : calibration.LeftOut)
        bytes += EntryLine({left.place, check, {{fact::Struck, left.reason}}});
    return bytes.empty() ? bytes : FactsHeading(name) + bytes;
}

std::string TakeCalibrationFacts(IseCalibration& calibration, std::string_view facts, std::string_view file) {
    const auto entries = ReadFacts(facts);
    if (!entries) return "What is known beside the calibration is of a newer version of this program.";
    const std::string check = FactsCheck(file);
    std::vector<StandardEntry> standards = AllStandards(calibration);
    for (const FactsEntry& entry : *entries) {
        if (entry.check != check)
            return "The calibration was changed elsewhere: what is known beside its file, standards left out with it, "
                   "is not taken up.";
        if (entry.row == 0) TakeOwn(calibration, entry.facts);
        if (entry.row >= 1 && entry.row <= static_cast<int>(standards.size()))
            standards[static_cast<std::size_t>(entry.row) - 1].leftOut = entry.facts.Get(fact::Struck);
    }
    if (WhyTooFew(standards).empty()) PutStandards(calibration, standards);
    return {};
}

std::string WriteCalibrationFacts(IseCalibration& calibration, const std::string& path, std::string_view file) {
    const std::string bytes = CalibrationFactsBytes(calibration, path, file), why = WriteFactsBeside(path, bytes);
    if (why.empty()) calibration.BesideCheck = CheckOf(bytes);
    return why.empty() || bytes.empty() ? std::string()
                                        : "What is known beside the calibration is not kept: " + why + ".";
}

std::string ReadCalibrationFacts(IseCalibration& calibration, const std::string& path, std::string_view file) {
    calibration.BesideCheck.clear();
    try {
        const auto facts = FactsFileBeside(path);
        if (facts) calibration.BesideCheck = CheckOf(*facts);
        return facts ? TakeCalibrationFacts(calibration, *facts, file) : std::string();
    } catch (const RuntimeError& error) {
        return LastPart(FactsFileOf(path)) + " cannot be read: " + error.what() + ".";
    }
}

std::string AmendCalibrationFacts(IseCalibration& calibration) {
    if (calibration.CaliFilePath.empty()) return {};
    const std::string name = calibration.CaliFileName;
    try {
        const std::string file = ReadWholeFile(calibration.CaliFilePath);
        const bool same =
            FactsCheck(file) == calibration.FileCheck &&
            CheckOf(FactsFileBeside(calibration.CaliFilePath).value_or(std::string())) == calibration.BesideCheck;
        if (!same) return name + " was changed elsewhere: this is not kept with it; File, Save, Calibration keeps it.";
        return WriteCalibrationFacts(calibration, calibration.CaliFilePath, file);
    } catch (const RuntimeError& error) {
        return "This is not kept: " + name + ": " + error.what() + ".";
    }
}

}  // namespace kelvo
