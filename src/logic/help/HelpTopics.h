#pragma once

#include <string>
#include <vector>

#include "core/ScreenCode.h"
#include "core/StateOf.h"

namespace kelvo {

/// The picture on a sheet.
enum class HelpPicture { Electrodes, Line, Meter, Addition, Membrane, Flask, Ions, Buffers, Glass, Trace, Interface };

/// One sheet of advice: a topic, or one step of it.
struct HelpSheetRow {
    int topic;
    int step;          ///< 0 where the topic has none
    const char* name;  ///< for lists and headings
    const char* note;  ///< file of its note pad in `HelpPath`; empty: its pad cannot be written to
    bool second;       ///< has a second sheet
    HelpPicture picture;
    const char* chapter;  ///< page of the manual, "manual.md#files"
};

/// A text file of `HelpPath` that the sheet shows whole, without a note pad.
struct HelpDocument {
    const char* file;
    const char* name;
    HelpPicture picture;
    const char* chapter;
};

const std::vector<HelpSheetRow>& HelpSheets();
const std::vector<HelpDocument>& HelpDocuments();

/// The sheet of a topic in a step. A step that the topic does not have counts as none; a topic beyond 7 gives the row
/// of topic -1: no name, no lines, no file.
const HelpSheetRow& FindHelpSheet(int topic, int step);
/// The document of that file name; null when it is none of the three.
const HelpDocument* FindHelpDocument(const std::string& file);

/// Step of the present topic by the marks of the paths. Of several marks the latest step counts.
int PresentHelpStep(const Navigation& state);

/// What a window is headed by: `HelpHeading` followed by the topic's title.
std::string HelpCaption(int topic);

/// What "Notes" and F1 lead to from a screen: leaves topic, step or document for the help sheet. A screen whose topic
/// is fixed by what it does sets it here once more, since a dialog in front of it may have left its own.
/// @return false when the screen has no sheet; F1 opens the manual there
bool RequestHelp(StateOf<Navigation, TableState> state, ScreenCode from);

}  // namespace kelvo
