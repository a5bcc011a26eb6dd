#include "calibration/CalibrationStandards.h"

#include <cmath>
#include <sstream>

#include "calibration/IseCalibration.h"
#include "text/Number.h"

namespace kelvo {

std::vector<StandardEntry> AllStandards(const IseCalibration& calibration) {
    std::vector<StandardEntry> all;
    if (calibration.CaliPoints < 1) return all;
    auto left = calibration.LeftOut.begin();
    const auto takeLeftOut = [&] {
        for (; left != calibration.LeftOut.end() && left->place <= static_cast<int>(all.size()) + 1; ++left)
            all.push_back({left->mv, left->logC, left->ppm, left->molar, left->reason});
    };
    for (std::size_t i = 1; i <= static_cast<std::size_t>(calibration.CaliPoints); ++i) {
        takeLeftOut();
        all.push_back({calibration.CaliE.at(i),
                       calibration.CaliLogC.at(i),
                       calibration.CaliPpm.at(i),
                       calibration.CaliMolar.at(i),
                       {}});
    }
    takeLeftOut();
    return all;
}

void PutStandards(IseCalibration& calibration, const std::vector<StandardEntry>& standards) {
    for (auto* column : {&calibration.CaliE, &calibration.CaliLogC, &calibration.CaliPpm, &calibration.CaliMolar})
        column->assign(1, 0.0f);
    calibration.LeftOut.clear();
    for (std::size_t i = 0; i < standards.size(); ++i) {
        const StandardEntry& standard = standards[i];
        if (!standard.leftOut.empty()) {
            calibration.LeftOut.push_back(
                {static_cast<int>(i) + 1, standard.mv, standard.logC, standard.ppm, standard.molar, standard.leftOut});
            continue;
        }
        calibration.CaliE.push_back(standard.mv);
        calibration.CaliLogC.push_back(standard.logC);
        calibration.CaliPpm.push_back(standard.ppm);
        calibration.CaliMolar.push_back(standard.molar);
    }
    calibration.CaliPoints = static_cast<std::int16_t>(calibration.CaliE.size() - 1);
}

std::string WhyTooFew(const std::vector<StandardEntry>& standards) {
    std::optional<float> first;
    for (const StandardEntry& standard : standards) {
        if (!standard.leftOut.empty()) continue;
        if (first && *first != standard.logC) return {};
        first = standard.logC;
    }
    return "Two standards of different concentrations must be left.";
}

std::optional<std::vector<double>> BlanksOf(const std::string& text) {
    std::vector<double> blanks;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!IsNumber(word)) return std::nullopt;
        blanks.push_back(Val(word));
    }
    return blanks;
}

std::optional<std::string> DayOf(const std::string& text) {
    const std::string day = Trim(text);
    constexpr std::size_t Length = 10;
    if (day.size() != Length || day[4] != '-' || day[7] != '-') return std::nullopt;
    for (std::size_t i = 0; i < Length; ++i)
        if (i != 4 && i != 7 && (day[i] < '0' || day[i] > '9')) return std::nullopt;
    const int year = static_cast<int>(Val(day.substr(0, 4))), month = static_cast<int>(Val(day.substr(5, 2)));
    const int number = static_cast<int>(Val(day.substr(8)));
    constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 1900 || year > 2999 || month < 1 || month > 12 || number < 1) return std::nullopt;
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    if (number > Days[month - 1] + (leap && month == 2 ? 1 : 0)) return std::nullopt;
    return day;
}

std::string WhyNotTold(const StandardsTold& told) {
    constexpr double MostPercent = 100, FarthestMv = 1e6;
    if (const std::string u = Trim(told.relativeU); !u.empty()) {
        if (!IsNumber(u) || !(Val(u) >= 0 && Val(u) <= MostPercent))
            return "The uncertainty of the standards is a number from 0 to 100 %, with a point.";
    }
    if (!Trim(told.expires).empty() && !DayOf(told.expires)) return "The expiry date is a day as 2026-11-27.";
    const auto blanks = BlanksOf(told.blanks);
    if (!blanks) return "Potentials of blanks are numbers with a point, with blanks between them.";
    for (const double blank : *blanks)
        if (!(std::abs(blank) <= FarthestMv)) return "The potential of a blank is no such number of mV.";
    return {};
}

std::string LotText(const StandardsTold& told) {
    std::string text = told.lot.empty() ? "" : "lot " + told.lot;
    if (!told.expires.empty()) text += (text.empty() ? "" : ", ") + ("expires " + told.expires);
    return text;
}

std::string ExpiredText(const StandardsTold& told, const std::string& day) {
    return !told.expires.empty() && told.expires < day ? "standards expired " + told.expires : std::string();
}

}  // namespace kelvo
