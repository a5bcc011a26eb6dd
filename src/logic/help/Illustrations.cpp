#include "help/Illustrations.h"

#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace kelvo {
namespace {

constexpr int Ink = colour::Black, Water = 3, Grey = 8, Glassware = 1, Mark = colour::LightRed,
              Blue = colour::LightBlue;
constexpr float Letters = 9;

using Points = std::vector<std::pair<float, float>>;

/// Shapes made of the lines and dots that a display list has.
class Drawing {
 public:
    DisplayList list;

    void Path(const Points& points, int colour = Ink, float width = 1) {
        for (std::size_t i = 1; i < points.size(); ++i)
            list.Line(points[i - 1].first, points[i - 1].second, points[i].first, points[i].second, colour, width);
    }

    void Box(float x, float y, float width, float height, int colour = Ink, float pen = 1) {
        Path({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}, {x, y}}, colour, pen);
    }

    /// Part of an ellipse, angles in degrees clockwise from the right.
    void Arc(float x, float y, float rx, float ry, float from, float to, int colour = Ink, float width = 1) {
        constexpr int Steps = 24;
        Points points;
        for (int i = 0; i <= Steps; ++i) {
            const float angle = (from + (to - from) * static_cast<float>(i) / Steps) * std::numbers::pi_v<float> / 180;
            points.emplace_back(x + rx * std::cos(angle), y + ry * std::sin(angle));
        }
        Path(points, colour, width);
    }

    void Arrow(float x1, float y1, float x2, float y2, int colour = Ink, float width = 1) {
        list.Line(x1, y1, x2, y2, colour, width);
        const float length = std::hypot(x2 - x1, y2 - y1);
        const float ux = (x2 - x1) / length * 130, uy = (y2 - y1) / length * 130;
        Path({{x2 - ux - uy / 2, y2 - uy + ux / 2}, {x2, y2}, {x2 - ux + uy / 2, y2 - uy - ux / 2}}, colour, width);
    }

    void Dashes(float x1, float y1, float x2, float y2, int colour) {
        constexpr int Steps = 21;
        for (int i = 0; i < Steps; i += 2) {
            const float a = static_cast<float>(i) / Steps, b = static_cast<float>(i + 1) / Steps;
            list.Line(x1 + (x2 - x1) * a, y1 + (y2 - y1) * a, x1 + (x2 - x1) * b, y1 + (y2 - y1) * b, colour);
        }
    }

    void Text(float x, float y, const char* text, int colour = Ink, float points = Letters) {
        list.Text(x, y, text, points, colour);
    }

    /// Liquid between two walls: a surface and short strokes below it, denser for `strong`.
    void Liquid(float left, float right, float surface, float bottom, bool strong = false) {
        list.Line(left, surface, right, surface, Water, 2);
        const float step = strong ? 130.0f : 230.0f;
        int row = 0;
        for (float y = surface + step; y < bottom - 60; y += step, ++row)
            for (float x = left + 120 + (row % 2 == 0 ? 0.0f : 200.0f); x + 180 < right; x += 400)
                list.Line(x, y, x + 180, y, Water);
    }

    void Beaker(float x, float y, float width, float height, float surface, bool strong = false) {
        Liquid(x, x + width, surface, y + height, strong);
        Path({{x - 120, y - 40}, {x, y + 60}, {x, y + height - 150}}, Glassware, 2);
        Arc(x + 150, y + height - 150, 150, 150, 180, 90, Glassware, 2);
        list.Line(x + 150, y + height, x + width - 150, y + height, Glassware, 2);
        Arc(x + width - 150, y + height - 150, 150, 150, 90, 0, Glassware, 2);
        list.Line(x + width, y + height - 150, x + width, y, Glassware, 2);
    }

    /// A shaft with cap and cable; the tip is round (pH) or flat (ISE).
    void Electrode(float x, float top, float tip, bool round, int colour = Ink) {
        constexpr float Half = 130;
        Box(x - Half - 30, top, 2 * Half + 60, 240, colour, 2);
        list.Line(x - Half, top + 240, x - Half, tip, colour, 2);
        list.Line(x + Half, top + 240, x + Half, tip, colour, 2);
        if (round) {
            Arc(x, tip, Half + 40, Half + 60, 160, 20, colour, 2);
        } else {
            list.Line(x - Half, tip, x + Half, tip, colour, 4);
        }
        list.Line(x, top, x, top - 200, colour, 3);
    }

    void Axes(float left, float top, float right, float bottom, const char* upright, const char* level) {
        Arrow(left, bottom, left, top, Ink, 2);
        Arrow(left, bottom, right, bottom, Ink, 2);
        Text(left + 110, top - 60, upright);
        Text(right - 620, bottom + 90, level);
    }

    /// A bottle with a label.
    void Bottle(float x, float y, const char* label) {
        Path({{x + 250, y + 320}, {x + 250, y}, {x + 550, y}, {x + 550, y + 320}}, Glassware, 2);
        Path({{x + 250, y + 320},
              {x, y + 560},
              {x, y + 1500},
              {x + 800, y + 1500},
              {x + 800, y + 560},
              {x + 550, y + 320}},
             Glassware, 2);
        Liquid(x, x + 800, y + 700, y + 1500);
        Box(x + 120, y + 880, 560, 330, Ink);
        Text(x + 190, y + 930, label);
    }
};

/// Potential of a falling or rising line that bends into the detection limit, for x from 0 to 1.
float Bent(float x) {
    return std::log10(std::pow(10.0f, 4 * x) + 2.5f) / 4;
}

void DrawElectrodes(Drawing& d) {
    d.Box(900, 3250, 2800, 380, Grey, 2);
    d.Text(1080, 3330, "stirrer", Grey);
    d.Beaker(1150, 1500, 2300, 1700, 1980);
    d.Electrode(1800, 700, 2650, false);
    d.Electrode(2800, 700, 2550, false, Grey);
    d.list.Line(2050, 3080, 2500, 3080, Grey, 6);
    d.Path({{1800, 500}, {1800, 300}, {4300, 300}, {4300, 800}}, Ink);
    d.Path({{2800, 500}, {2800, 420}, {4050, 420}, {4050, 800}}, Grey);
    d.Box(3750, 800, 1500, 800, Ink, 2);
    d.Text(3920, 1060, "-58.3 mV", Ink, 11);
    d.Text(400, 900, "ISE");
    d.list.Line(800, 1000, 1640, 1000, Ink);
    d.Text(3600, 1750, "reference", Grey);
    d.list.Line(2960, 1850, 3560, 1850, Grey);
}

void DrawLine(Drawing& d) {
    d.Axes(700, 400, 5100, 3300, "E (mV)", "LogC");
    Points curve;
    for (int i = 0; i <= 40; ++i) {
        const float x = static_cast<float>(i) / 40;
        curve.emplace_back(900 + 3900 * x, 3200 - 2600 * Bent(x));
    }
    d.Path(curve, Blue, 2);
    d.Dashes(900, 3200, 2000, 2467, Grey);
    d.Dashes(900, 2942, 2300, 2942, Grey);
    for (const int i : {12, 22, 32, 39})
        d.list.Dot(curve[static_cast<std::size_t>(i)].first, curve[static_cast<std::size_t>(i)].second, Mark, 150);
    d.Text(1500, 2970, "detection limit", Grey, 8);
    d.Path({{2900, 1866}, {3780, 1866}, {3780, 1280}}, Ink);
    d.Text(3850, 1480, "S", Ink, 11);
    d.Text(2900, 1950, "one decade", Ink, 8);
}

void DrawMeter(Drawing& d) {
    d.Axes(700, 400, 5100, 3300, "E (mV)", "LogC");
    d.list.Line(950, 3050, 4700, 700, Blue, 2);
    for (const float x : {0.05f, 0.35f, 0.65f, 0.95f})
        d.list.Dot(950 + 3750 * x, 3050 - 2350 * x, Ink, 120);
    const float x = 950 + 3750 * 0.5f, y = 3050 - 2350 * 0.5f;
    d.Arrow(700, y, x - 90, y, Mark);
    d.Arrow(x, y + 90, x, 3280, Mark);
    d.list.Dot(x, y, Mark, 170);
    d.Text(x + 150, y + 60, "sample", Mark);
    d.Text(4000, 1250, "standards");
}

void DrawAddition(Drawing& d) {
    d.Beaker(500, 1700, 1500, 1500, 2250);
    d.Electrode(1250, 1000, 2700, false);
    d.Beaker(3300, 1700, 1500, 1500, 2080, true);
    d.Electrode(4350, 1000, 2700, false);
    d.Arrow(2300, 2450, 3000, 2450, Ink, 2);
    // The pipette over the second beaker.
    d.Path({{3650, 350}, {3650, 700}, {3590, 800}, {3590, 1150}, {3680, 1350}, {3680, 1650}}, Glassware, 2);
    d.Path({{3770, 350}, {3770, 700}, {3830, 800}, {3830, 1150}, {3740, 1350}, {3740, 1650}}, Glassware, 2);
    d.list.Line(3600, 900, 3820, 900, Water, 2);
    d.list.Dot(3710, 1850, Water, 110);
    d.Text(1100, 3350, "E1", Ink, 11);
    d.Text(3900, 3350, "E2", Ink, 11);
    d.Text(2250, 2080, "add", Ink);
    d.Text(1700, 450, "known volume", Ink);
    d.list.Line(2900, 560, 3550, 700, Ink);
}

void DrawMembrane(Drawing& d) {
    for (int i = 0; i < 9; ++i) {
        const float y = 500 + 320 * static_cast<float>(i);
        d.Box(2550, y, 300, 250, Grey, 2);
    }
    d.Text(2250, 150, "membrane", Grey);
    for (const auto& [x, y] : Points{{700, 800}, {1500, 1500}, {900, 2300}, {1700, 2900}, {3300, 1500}, {4300, 2300}})
        d.list.Dot(x, y, Blue, 300);
    for (const auto& [x, y] : Points{{1300, 700}, {600, 1600}, {1500, 2200}, {800, 3100}})
        d.list.Dot(x, y, Mark, 380);
    d.Arrow(1700, 1500, 3050, 1500, Blue, 2);
    d.Path({{1720, 2200}, {2450, 2450}}, Mark, 2);
    d.Arrow(2450, 2450, 1950, 2750, Mark, 2);
    d.Text(400, 3450, "sample");
    d.Text(3500, 3450, "inside");
    d.Text(3500, 700, "K: how often the", Ink, 8);
    d.Text(3500, 920, "other one passes", Ink, 8);
}

void DrawFlask(Drawing& d) {
    // Pipette with its bulb.
    d.Path({{900, 300}, {900, 1100}}, Glassware, 2);
    d.Path({{1040, 300}, {1040, 1100}}, Glassware, 2);
    d.Arc(970, 1500, 260, 400, 285, 435, Glassware, 2);
    d.Arc(970, 1500, 260, 400, 105, 255, Glassware, 2);
    d.Path({{905, 1890}, {945, 2900}}, Glassware, 2);
    d.Path({{1035, 1890}, {995, 2900}}, Glassware, 2);
    d.list.Line(850, 700, 1090, 700, Mark);
    d.Text(560, 3150, "10 mL");
    d.Arrow(1700, 2000, 2500, 2000, Ink, 2);
    // Volumetric flask with its mark.
    d.Path({{3750, 300}, {3750, 1700}}, Glassware, 2);
    d.Path({{4050, 300}, {4050, 1700}}, Glassware, 2);
    d.Arc(3900, 2500, 900, 820, 281, 410, Glassware, 2);
    d.Arc(3900, 2500, 900, 820, 130, 259, Glassware, 2);
    d.list.Line(3320, 3128, 4480, 3128, Glassware, 2);
    d.list.Line(3690, 900, 4110, 900, Mark);
    d.Text(4200, 790, "mark", Mark);
    d.list.Line(3750, 900, 4050, 900, Water, 2);
    d.Liquid(3150, 4650, 2150, 3000);
    d.Text(3620, 3350, "100 mL");
}

void DrawIons(Drawing& d) {
    d.Arc(2700, 1950, 1150, 1150, 0, 360, Grey);
    d.list.Dot(2700, 1950, Mark, 560);
    d.Text(2600, 1760, "+", colour::White, 16);
    for (int i = 0; i < 7; ++i) {
        const float angle = static_cast<float>(i) * 2 * std::numbers::pi_v<float> / 7;
        const float x = 2700 + 1000 * std::cos(angle), y = 1950 + 1000 * std::sin(angle);
        d.list.Dot(x, y, Blue, 330);
        d.Text(x - 45, y - 165, "-", colour::White, 13);
    }
    for (const auto& [x, y] : Points{{700, 700}, {4700, 900}, {900, 3200}, {4600, 3100}})
        d.list.Dot(x, y, Mark, 330);
    d.Text(3750, 3550, "activity < concentration", Ink, 8);
}

void DrawBuffers(Drawing& d) {
    d.Bottle(500, 1400, "4.01");
    d.Bottle(2200, 1400, "6.87");
    d.Bottle(3900, 1400, "9.18");
    d.Arrow(600, 3250, 4800, 3250, Ink, 2);
    d.Text(1900, 3350, "in the order of rising pH");
    d.Text(600, 700, "+177 mV", Blue);
    d.Text(2350, 850, "+8 mV", Blue);
    d.Text(4000, 1000, "-129 mV", Blue);
}

void DrawGlass(Drawing& d) {
    d.Path({{2300, 700}, {2300, 2900}, {2500, 2980}}, Glassware, 2);
    d.Path({{3100, 700}, {3100, 2900}, {2900, 2980}}, Glassware, 2);
    d.Box(2250, 350, 900, 350, Ink, 2);
    d.list.Line(2700, 350, 2700, 120, Ink, 4);
    d.list.Line(2560, 700, 2560, 2980, Glassware, 1);
    d.list.Line(2840, 700, 2840, 2980, Glassware, 1);
    d.Arc(2700, 3180, 300, 300, -118, 298, Glassware, 2);
    d.list.Line(2700, 700, 2700, 3150, Grey, 2);
    d.list.Line(2430, 700, 2430, 2300, Grey, 2);
    d.list.Line(2300, 1150, 2560, 1150, Water, 2);
    d.list.Line(2840, 1150, 3100, 1150, Water, 2);
    d.list.Dot(2320, 2750, Mark, 150);
    d.Arc(2300, 900, 50, 50, 0, 360, Mark, 2);
    d.Dashes(700, 1500, 2250, 1500, Water);
    d.Dashes(3150, 1500, 4700, 1500, Water);
    const auto label = [&](float y, const char* text, float tip) {
        d.Text(3750, y, text, Ink, 8);
        d.list.Line(tip, y + 100, 3700, y + 100, Grey);
    };
    label(780, "filling hole", 2360);
    label(1050, "filling", 3110);
    d.Text(720, 1540, "sample", Water, 8);
    label(2650, "junction", 2400);
    label(3080, "glass bulb", 3010);
}

void DrawTrace(Drawing& d) {
    d.Axes(700, 400, 5100, 3300, "pH, ppm", "time");
    for (int i = 1; i <= 8; ++i)
        d.Dashes(700 + 500 * static_cast<float>(i), 500, 700 + 500 * static_cast<float>(i), 3300, 7);
    const auto trace = [&](float low, float rise, float middle, int colour) {
        Points points;
        for (int i = 0; i <= 40; ++i) {
            const float t = static_cast<float>(i) / 40;
            points.emplace_back(700 + 4100 * t, low - rise / (1 + std::exp(-14 * (t - middle))));
        }
        d.Path(points, colour, 2);
        for (std::size_t i = 0; i < points.size(); i += 4)
            d.list.Dot(points[i].first, points[i].second, colour, 100);
    };
    trace(2900, 1900, 0.5f, Mark);
    trace(2400, 1000, 0.7f, Blue);
}

void DrawInterface(Drawing& d) {
    d.Box(1700, 900, 2000, 1000, Ink, 2);
    d.Text(2150, 1020, "interface", Ink, 10);
    d.Text(1800, 1600, "1", Ink);
    d.Text(3450, 1600, "2", Ink);
    for (const float x : {1950.0f, 2350.0f, 2950.0f, 3350.0f})
        d.list.Dot(x, 1780, Grey, 170);
    d.Path({{1950, 1800}, {1950, 2150}, {900, 2150}, {900, 2300}}, Ink);
    d.Path({{2350, 1800}, {2350, 2300}}, Grey);
    d.Path({{2950, 1800}, {2950, 2300}}, Grey);
    d.Path({{3350, 1800}, {3350, 2150}, {4500, 2150}, {4500, 2300}}, Ink);
    d.Electrode(900, 2450, 3400, false);
    d.Electrode(4500, 2450, 3400, true);
    for (const float x : {2350.0f, 2950.0f}) {
        d.list.Line(x, 2300, x, 3400, Grey, 4);
        d.list.Dot(x, 3400, Grey, 120);
    }
    d.Text(1150, 3450, "ISE or pH", Ink, 8);
    d.Text(2150, 3600, "temperature", Grey, 8);
    d.Text(3900, 3680, "second pH", Ink, 8);
    d.Path({{3700, 1200}, {4300, 1200}, {4300, 950}}, Ink, 2);
    d.Box(3950, 250, 1100, 650, Ink, 2);
    d.list.Line(3800, 950, 5200, 950, Ink, 3);
    d.Text(4220, 450, "COM1", Ink);
}

}  // namespace

DisplayList Illustration(HelpPicture picture) {
    Drawing drawing;
    switch (picture) {
        case HelpPicture::Electrodes: DrawElectrodes(drawing); break;
        case HelpPicture::Line: DrawLine(drawing); break;
        case HelpPicture::Meter: DrawMeter(drawing); break;
        case HelpPicture::Addition: DrawAddition(drawing); break;
        case HelpPicture::Membrane: DrawMembrane(drawing); break;
        case HelpPicture::Flask: DrawFlask(drawing); break;
        case HelpPicture::Ions: DrawIons(drawing); break;
        case HelpPicture::Buffers: DrawBuffers(drawing); break;
        case HelpPicture::Glass: DrawGlass(drawing); break;
        case HelpPicture::Trace: DrawTrace(drawing); break;
        case HelpPicture::Interface: DrawInterface(drawing); break;
    }
    return drawing.list;
}

DisplayList PageCorner(bool back) {
    Drawing d;
    const auto x = [&](float at) { return back ? 900 - at : at; };
    d.Path({{x(150), 80}, {x(750), 80}, {x(750), 600}, {x(550), 820}, {x(150), 820}, {x(150), 80}}, Ink, 2);
    d.Path({{x(550), 820}, {x(550), 600}, {x(750), 600}}, Ink, 2);
    for (const float y : {240.0f, 370.0f, 500.0f})
        d.list.Line(x(260), y, x(640), y, Grey);
    d.Arrow(x(240), 690, x(470), 690, Blue, 2);
    return d.list;
}

}  // namespace kelvo
