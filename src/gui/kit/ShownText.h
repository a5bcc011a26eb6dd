#pragma once

class QApplication;

namespace kelvo {

/// What every label of the program keeps to, whoever makes it and wherever it stands, message boxes and tips included:
///
/// - its text is shown as it is. A file named "<h1>A" is no heading; a label that means markup says so itself.
/// - a screen reader gets name and value: the accessible name says what the label holds ("pH of electrode 1"), its text
///   is the value ("7.02"). A label without such a name is read as it stands. A picture says what it shows.
void KeepLabelsPlainAndSpoken(QApplication& app);

}  // namespace kelvo
