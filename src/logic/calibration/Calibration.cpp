#include "calibration/Calibration.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/CustomCharge.h"
#include "core/Paths.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Basis = CalibrationQuality::Basis;
constexpr double GramsPerLitre = 1000;  // ppm are mg/L

/// What a column of the state holds at a point; 0 where a damaged file has left it short.
float Held(const std::vector<float>& column, std::size_t i) {
    return i < column.size() ? column[i] : 0;
}

CalibrationData::Curve CurveOf(const IseCalibration& calibration) {
    using Curve = CalibrationData::Curve;
    if (calibration.LinearFit == 1) return Curve::Line;
    if (calibration.PartlyLinearFit == 1) return Curve::Segments;
    if (calibration.LowEndCurve == 1) return Curve::LowEnd;
    return calibration.BestFitCurve == 1 ? Curve::BestFit : Curve::None;
}

/// The curve that gives intervals in the place of the line.
std::optional<ResultCurve::Kind> KindOf(CalibrationData::Curve curve) {
    using Curve = CalibrationData::Curve;
    switch (curve) {
        case Curve::Segments: return ResultCurve::Kind::Segments;
        case Curve::BestFit: return ResultCurve::Kind::BestFit;
        case Curve::LowEnd: return ResultCurve::Kind::LowEnd;
        case Curve::None:
        case Curve::Line: break;
    }
    return std::nullopt;
}

/// Temperature that the calibration is judged by: the one that is shown with it, else the working temperature.
std::optional<double> CelsiusOf(const CalibrationData& data) {
    for (const std::string* text : {&data.celsius, &data.workingCelsius})
        if (Trim(*text).find_first_of("0123456789") != std::string::npos) return Val(*text);
    return std::nullopt;
}

/// The points in double precision. A LogC beyond ±100 or a potential beyond ±1E6 mV, which only a damaged file holds,
/// counts as that limit, so that no figure overflows; one that is no number is left out.
QualityInput InputOf(const CalibrationData& data, int customCharge) {
    constexpr double FarthestLogC = 100, FarthestMv = 1e6;
    QualityInput input;
    for (const CalibrationPoint& point : data.points) {
        if (std::isnan(point.logC) || std::isnan(point.mv)) continue;
        input.standards.logC.push_back(std::clamp<double>(point.logC, -FarthestLogC, FarthestLogC));
        input.standards.mv.push_back(std::clamp<double>(point.mv, -FarthestMv, FarthestMv));
        input.ppm.push_back(point.ppm);
    }
    input.gramsPerMole = data.gramsPerMole;
    input.knownSlope = data.slope;
    input.ion =
        data.ion == CustomIonRow && customCharge != 0 ? ResponseOf(data.ionName, customCharge) : ResponseOf(data.ion);
    input.celsius = CelsiusOf(data);
    input.crossed = data.crossed;
    return input;
}

}  // namespace

CalibrationData CalibrationDataOf(const CalibrationState& state) {
    CalibrationData data;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(std::max<int>(0, state.CaliPoints)); ++i) {
        if (i >= state.CaliE.size() || i >= state.CaliLogC.size()) break;
        data.points.push_back({state.CaliE[i], state.CaliLogC[i], Held(state.CaliPpm, i), Held(state.CaliMolar, i)});
    }
    data.curve = CurveOf(state);
    data.intercept = state.CaliEo;
    data.slope = state.CaliSlope;
    data.a = state.FitA;
    data.b = state.FitB;
    data.c = state.FitC;
    data.refused = state.LineRefused;
    data.crossed = !PairingRemark(state).empty();
    data.ion = state.IonIndex;
    if (data.ion >= 0 && data.ion < IonRows) {
        data.ionName = state.Ions.names[static_cast<std::size_t>(data.ion)];
        data.gramsPerMole = state.Ions.weights[static_cast<std::size_t>(data.ion)];
    }
    data.celsius = state.FileTemp;
    data.workingCelsius = state.CaliTemp;
    data.operatorName = state.FileOperator;
    data.date = state.FileDate;
    data.electrode = state.FileElectrodeNum[0];
    data.file = state.CaliFileName;
    data.reference = state.FileRefElectrode;
    if (!data.points.empty()) data.leftOut = state.LeftOut;
    data.told = state.Told;
    return data;
}

Calibration::Calibration(CalibrationData data, const QualityLimits& by, int customCharge)
    : CalibrationData(std::move(data)),
      limits(by),
      input(InputOf(*this, customCharge)),
      quality(JudgeQuality(input, limits)),
      verdict(JudgeCalibration(curve == Curve::LowEnd ? JudgedByLowEnd(quality) : quality, input.ion, crossed, limits)),
      uncertainty(input.standards, Line(), input.celsius, limits, ion < 0 ? 1 : GramsPerLitre * gramsPerMole) {
    uncertainty.LookAt({quality.range, Unit(), Doubt(), KindOf(curve)});
}

std::string Calibration::CurveName() const {
    const auto kind = KindOf(curve);
    return kind ? NameOf(*kind) : std::string();
}

std::optional<StraightLine> Calibration::Line() const {
    const bool has =
        quality.basis == Basis::Line || quality.basis == Basis::TwoPoints || quality.basis == Basis::OnePotential;
    return has ? std::optional(quality.line) : std::nullopt;
}

double Calibration::Ppm(double molar) const {
    return ion == NoIon ? 0 : Finite(molar * GramsPerLitre * gramsPerMole);
}

std::optional<double> Calibration::SegmentSlope(std::size_t i) const {
    const CalibrationPoint &from = points.at(i - 1), &to = points.at(i);
    const double decades = double{to.logC} - from.logC;
    if (decades == 0) return std::nullopt;
    return (double{to.mv} - from.mv) / decades;
}

Calibration CalibrationOf(const CalibrationState& state, const QualityLimits& limits, int customCharge) {
    return {CalibrationDataOf(state), limits, customCharge};
}

void CalibrationInUse::ReadSettings() {
    const QualityLimits limits = ReadQualityLimits(state_.Get<const Paths>().IniPath);
    if (limits_ != limits) made_.reset();
    limits_ = limits;
}

std::shared_ptr<const Calibration> CalibrationInUse::Get() {
    CalibrationData data = CalibrationDataOf(state_);
    const int charge =
        data.ion == CustomIonRow ? CustomCharge({state_.Get<const Paths>(), state_.Get<const CalibrationState>()}) : 0;
    if (made_ == nullptr || charge_ != charge || static_cast<const CalibrationData&>(*made_) != data)
        made_ = std::make_shared<const Calibration>(std::move(data), limits_, charge);
    charge_ = charge;
    return made_;
}

}  // namespace kelvo
