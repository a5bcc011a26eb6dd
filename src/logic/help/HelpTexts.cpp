#include "help/HelpTexts.h"

namespace kelvo {
namespace {

using Lines = std::vector<HelpLine>;
constexpr bool Heading = true;

// Where the figures come from is told beside the lines that hold them; docs/sources.md has the references in full.
// [Nernst] 59.16 mV a decade and charge at 25 °C: ln 10 · R · T / F with the CODATA constants.
// [ISE 1994] slope, detection limit, interference: IUPAC recommendations for ion-selective electrodes.
// [pH 2002] buffers, slope as a check, two-point and multi-point calibration: IUPAC recommendations for pH.
// [Frant 1968] buffering and releasing fluoride: the paper that introduced TISAB.

// Dilution series and the order of entry: the program sorts potentials but not LogC, so the lowest potential is first.
const Lines CalibrationSetup = {
    {"Please enter the various parameters required for the calibration graph.  Either accept the default"},
    {"or choose the two scales so that all standards and samples lie inside them; then the ion and the number"},
    {"of points. Take standards one decade apart that enclose the samples, three or more."},
    {""},
    {"Soak the electrode as its leaflet says, rinse and blot it. Give every standard and sample the same share of"},
    {"ISAB, so that all have one ionic strength. Stir all alike and slowly, and keep them within 1°C."},
    {""},
    {"Enter the standards from the lowest potential up: positive ions from the weakest standard, negative ions"},
    {"from the strongest. Wait for each until 10 seconds change less than 0.1 mV, which takes minutes in a weak one."},
    {""},
    {"One point is enough when the slope of the electrode is known: it is asked for afterwards."},
};

// 95 % to 102 % of the Nernst slope as good and 85 % to 105 % as usable, the limits of Calibration Quality; 4 % a
// millivolt: [Nernst].
const Lines CalibrationGraph = {
    {"When you have an acceptable Calibration graph, please click on Potentiometry to start to measure"},
    {"samples. Calibration Quality in the Option menu judges the graph and tells its reasons. Acceptable means:"},
    {""},
    {"The slope is near theory: 56 to 60 mV per decade for one charge, 28 to 30 for two, negative for negative ions;"},
    {"50 to 62 and 25 to 31 serve for routine work. A low slope tells of an old membrane or of wrong standards."},
    {""},
    {"The points lie on the line: 1 mV beside it is 4% of the concentration for one charge, 8% for two. Where the"},
    {"weakest point bends away the detection limit begins: use the best-fit curve there, or leave the point out."},
    {""},
    {"A straight line is drawn on beyond the points, joined segments are not. Save the calibration: the slope and"},
    {"its temperature then serve the addition methods as well."},
};

// Known additions to a sample whose ion is bound by a large excess: the free share stays the same, so it cancels.
const Lines Potentiometry = {
    {"The Potentiometry/Measurement screen is the main working area for ISE measurements. Once a calibration"},
    {"is on the graph, choose Potentiometry: KeyBoard Input takes potentials that you type, OnLine Reading"},
    {"takes them from the interface. Each result is marked on the graph and becomes a row of the data table."},
    {""},
    {"Treat samples as you treated the standards: the same share of ISAB, the same beaker and stirring, within"},
    {"1°C. Rinse with water and blot before each. Wait as long as you waited for a standard of that strength."},
    {""},
    {"Let the samples fall between the standards. Below the boxes stands how sure a result is, and whether it lies"},
    {"outside the calibrated range. Toward the detection limit the straight line reads too high."},
    {""},
    {"Measure a standard as if it were a sample after every ten: more than 2% off, and it is time to calibrate."},
    // Second sheet.
    {"When a result looks odd", Heading},
    {"- All too high or low by one factor: another temperature, no ISAB, a wrong dilution, or ppm of the ion taken"},
    {"for ppm of an element (NO3 and N differ by 4.4). Dilute the sample tenfold: a true result falls tenfold."},
    {"- Some too high: an interfering ion (see ISE Selectivity in Labkit) or carry-over from a strong sample."},
    {"- Some too low: the ion is bound, fluoride by aluminium or in acid, metals by EDTA or alkali. Only the free ion"},
    {"is measured. Standard Addition finds the bound ions too, as long as what binds them is in large excess."},
    {"- Drifting: wait, then look at the reference electrode, its filling and its junction."},
    {""},
};

// 10 to 30 mV: by the formula an error of 1 mV is one of 3.9 % · Q / (Q − 1) in the result, with Q = 10^(ΔE / S):
// 12 % after a change of 10 mV, 6 % after 30 mV, at 59.16 mV per decade.
Lines Addition(bool standard) {
    return {
        {"Please complete all the boxes provided, and remember to press Enter after"},
        {"each entry. The yellow box is the one to fill next; volume and strength of the standard are suggested."},
        {standard ? "Avoid adding less than 10% of the sample volume." : ""},
        {standard ? "The dilution effect of the standard added to the sample is necessary for good precision." : ""},
        {""},
        {"To measure another sample with the same volume and concentration data, please double click"},
        {"on the on-line box to read in the on-line data (when an interface is connected), or click on"},
        {"any appropriate box to change any of the data before measuring"},
        {""},
        {"Measure both potentials at one temperature, stirred alike, each after the same wait. A change of 10 to 30 mV"},
        {"(half of it for two charges) is right; less makes every tenth of a millivolt and every drop count."},
    };
}
const Lines StandardAddition = Addition(true);
const Lines SampleAddition = Addition(false);

// Coefficients depend on method and concentration: [ISE 1994]. Fluoride and hydroxide: [Frant 1968].
const Lines Selectivity = {
    {"Select the ion in which you are interested and type in an expected / arbitrary ppm value"},
    {"for it, then press Enter: each row shows an interfering ion, its selectivity coefficient, and how much of"},
    {"that ion would make the result 10% too high. Type what your sample holds to see its share and the total."},
    {""},
    {"'must be absent' means that the ion attacks or covers the membrane: even traces have to be removed."},
    {""},
    {"A selectivity coefficient is no constant. It depends on concentration, on the method, on the age of the"},
    {"membrane. Use it to see whether an ion matters at all, not to correct a result."},
    {""},
    {"What helps: precipitate or mask the other ion, shift the pH (fluoride: pH 5 to 5.5 keeps hydroxide away and"},
    {"the fluoride free), dilute when it is in excess only at the weak end, or choose another electrode."},
};

const Lines Conversion = {
    {"To convert from ppm to moles, or vice verce, please select a"},
    {"detected ion first: its weight links the two. Then type ppm, or leave that box with Enter and type mol/L."},
    {"Enter works out the other, and LogC from ppm."},
    {""},
    {"ppm here is mg per litre of solution. With the density in g/mL you also get mg per kg: for dilute solutions"},
    {"in water (1.00) the two agree, for brine, syrup or acid they do not."},
    {""},
    {"Mind what the figure counts. 10 ppm as nitrogen are 44.3 ppm as nitrate; 10 ppm as calcium carbonate are"},
    {"4.0 ppm of calcium. The weight used is that of the ion chosen."},
    {""},
    {"The dilution is on the next sheet."},
    // Second sheet.
    {"Calculation of dilution factors", Heading},
    {"Type the volume you want, its concentration, and the concentration of the standard at hand. The last line"},
    {"says how many mL of the standard to fill up to that volume. Fill up to the mark; do not add the two volumes."},
    {""},
    {"Below 1 mL a pipette's error grows to more than 1%: dilute in two steps instead, no more than a hundredfold"},
    {"each. Use class A flasks and pipettes, rinse them with the solution, let water reach room temperature."},
    {""},
    {"A series for calibration: each standard from the one before, 10 mL to 100 mL, gives clean decades. Make"},
    {"standards below 0.0001 mol/L fresh each day and in plastic, since glass gives off and takes up ions."},
    {"Write the dilution on the bottle and into the note pad."},
};

// The formula with its 0.1 z² I term and the limit of 0.6 mol/L are the screen's; ion sizes after Kielland 1937.
const Lines Activity = {
    {"Select an ion from the 'ion box' and type in an estimate of "},
    {"the ionic strength of the solution, then press Enter: the activity coefficient appears. Type the activity"},
    {"that the electrode gave, and the concentration appears, or the other way round."},
    {""},
    {"Ionic strength is half the sum, over all ions, of concentration in mol/L times the square of the charge:"},
    {"0.1 mol/L NaCl has 0.1, 0.1 mol/L CaCl2 has 0.3, sea water about 0.7, tap water 0.01."},
    {""},
    {"The coefficient holds up to 0.6 mol/L and grows uncertain above 0.1. It is 1 in very dilute solutions, and"},
    {"falls faster for two charges: at 0.1 mol/L about 0.8 for one charge, 0.4 for two."},
    {""},
    {"When it is needed at all is on the next sheet."},
    // Second sheet.
    {"Activity or concentration", Heading},
    {"An ISE answers to activity. With the same ISAB in standards and samples the coefficient is the same in all,"},
    {"so a calibration in concentration gives concentration, and nothing has to be converted."},
    {""},
    {"Convert when no ISAB can be added: when measuring in a stream, in blood or soil water, or when activity itself"},
    {"is asked for (as with pH). Then calibrate with standards whose activities you worked out here."},
    {""},
    {"The box for ionic strength in ppm counts the chosen ion alone; type mol/L when other salts are present."},
};

// Rising pH: the program looks for the segment of a reading among rows with falling potentials. Slope check: [pH 2002].
const Lines PhCalibration = {
    {"For 2 channel interfaces, you have the option to connect and"},
    {"calibrate two pH electrodes. Choose Yes for each one to be calibrated, and 2 to 4 buffers."},
    {""},
    {"Take the buffers in the order of rising pH, one of them near 7, so that they enclose the samples. Type the pH"},
    {"that the buffer has at its present temperature: it stands on the label, or in Introduction."},
    {""},
    {"Open the filling hole, rinse and blot the electrode, stir slowly, wait until the mV stand still, click on OK."},
    {"Use fresh buffer each time and throw it away; never pour it back."},
    {""},
    {"A healthy electrode gives 56 to 60 mV per unit of pH at 25°C, and 0 ± 30 mV at pH 7. After the last buffer a line"},
    {"at the foot tells both: read it before you save."},
    {""},
};

// Storage and cleaning: [pH 2002] and the common practice of electrode leaflets. 0.198 mV per degree: [Nernst].
const Lines PhMeasurement = {
    {"Care of pH electrodes", Heading},
    {"Rinse with distilled water between samples and blot; rubbing charges the glass. Immerse bulb and junction."},
    {"Keep the filling hole open while measuring and the filling above the sample. Stir slowly, always alike."},
    {""},
    {"A value is good when it stands: half a minute in a buffer, minutes in rain or condensate. ATC corrects the"},
    {"slope of the electrode for temperature, not the change of the sample itself: write the temperature down."},
    {""},
    {"Calibrate once a day, and after cleaning. Check with a buffer between: 0.05 pH off is time to calibrate."},
    {"'Error' stands for a pH outside 0 to 14: a plug out, an electrode dry, or a wrong calibration."},
    {""},
    {"How to test, clean and store an electrode is on the next sheet."},
    {""},
    // Second sheet.
    {"Testing of pH Electrodes", Heading},
    {"Read the mV in buffer pH 7: within 30 mV of 0. Read them in buffer pH 4 at the same temperature: 168 to 180 mV"},
    {"higher at 25°C (95% to 101% of 59.16 mV per unit). Both should stand within half a minute."},
    {""},
    {"- Slope low, or slow to stand: the glass is coated or old. Clean it."},
    {"- Far from 0 in pH 7: the filling is diluted, or the junction is blocked. Change the filling; warm the tip in 3"},
    {"mol/L potassium chloride at 50°C for ten minutes."},
    {"- The same value in every buffer: glass cracked, or a short in plug or cable. Nothing helps."},
    {"- Stirring or moving the cable changes it: junction clogged, plug damp or broken."},
    {""},
    {"Cleaning", Heading},
    {"Fat: warm water with detergent. Lime: 0.1 mol/L hydrochloric acid, some minutes. Protein: 1% pepsin in 0.1 mol/L"},
    {"hydrochloric acid, an hour. Black junction: thiourea in the same acid until it is pale. Then rinse, soak for an"},
    {"hour in storage solution, calibrate."},
    {""},
    {"Storage of Combination Electrodes", Heading},
    {"Wet, in 3 mol/L potassium chloride, the filling hole closed. Never in distilled water: it leaches glass and"},
    {"junction and makes the electrode slow."},
    {"- Overnight: the wetting cap with a few mL of that solution is enough. Over months: the same, and look now and"},
    {"then whether it is still wet. White crystals outside are harmless: rinse them off."},
    {"- An electrode that has dried out: soak it overnight, then test it as above."},
    {""},
    {"Redox electrodes are stored in the same way. Polish a slow platinum tip with fine alumina, then rinse it well."},
    {"Their value is the mV box; the pH beside it means nothing."},
};

const Lines RecordingSetup = {
    {"Please select your options for the various parameters to set up your continuous recording"},
    {"and click on OK. The interval times the number of points is the monitoring period, about as the list says."},
    {"Choose it so that the step you look for takes ten points or more, and the period a little longer than the run."},
    {""},
    {"Tick the electrodes to record, and ATC where the temperature may change. Calibrate first: electrodes drift, and"},
    {"over a long recording so does their calibration. Read a buffer at the end, and write it into the note pad."},
    {"Cover the vessel, keep the filling of the electrode above the liquid, switch off the sleep mode of the computer."},
};

const Lines Recording = {
    {"Select the Options menu to view the data table, or to change the pH scale or the number of"},
    {"readings averaged. A change of scale draws the graph anew and leaves the values as they are."},
    {""},
    {"Stop holds the recording, Re-start goes on at the next point: the elapsed time counts points, not the pause."},
    {"A point beyond the scale is drawn at its edge; its value in the table is the true one."},
    {"To read a value, type its data number and press Enter. Rows go to the file point by point if you chose one at"},
    {"the start; otherwise you are asked when you leave."},
};

const Lines None = {};

}  // namespace

const std::vector<HelpLine>& HelpLines(int topic, int step) {
    switch (topic) {
        case 0: return step == 2 ? CalibrationGraph : CalibrationSetup;
        case 1: return Potentiometry;
        case 2: return StandardAddition;
        case 3: return SampleAddition;
        case 4: return Selectivity;
        case 5: return Conversion;
        case 6: return Activity;
        default: break;
    }
    if (topic != 7) return None;
    switch (step) {
        case 1: return PhCalibration;
        case 2: return PhMeasurement;
        case 3: return RecordingSetup;
        case 4: return Recording;
        default: return None;
    }
}

}  // namespace kelvo
