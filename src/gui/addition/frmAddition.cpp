#include "addition/frmAddition.h"

#include <QtWidgets>

#include "core/HardwareSettings.h"
#include "devices/TablePrint.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "link/ShowReadingState.h"
#include "tables/TablePresenter.h"

namespace kelvo {
namespace {

constexpr int White = 15;

/// Place of the reading dialog on the screen, of 12000 by 9000 twips; how far across is the method's.
constexpr int DialogTop = 350, FullWidth = 12000, FullHeight = 9000;

}  // namespace

void frmAddition::OnLoad() {
    presenter_.Load();
    ShowState();
}

void frmAddition::OnActivate() {
    if (focusWidget() == nullptr || focusWidget() == this) BoxAt(AdditionForm::SampleMl)->setFocus();
}

void frmAddition::ShowState() {
    binder_.WriteBack();
}

void frmAddition::ShowRest() {
    const AdditionForm& form = presenter_.Form();
    setWindowTitle(ToQt(presenter_.Caption()));
    Label28_->setText(ToQt(form.Date()));
    comment_->setText(ToQt(form.Comment()));
    comment_->setToolTip(ToQt(form.Ratio()));
    const std::array<bool, 2> possible = {true, context_.screens.Knows(ScreenCode::frmPtset)};
    for (std::size_t i = 0; i < ticks_.size(); ++i) {
        ticks_[i]->setChecked(presenter_.Ticked(static_cast<int>(i)));
        ticks_[i]->setEnabled(form.OnLineOffered() && possible[i]);
    }
    editAsd_->setVisible(ticks_[1]->isEnabled());
    printTable_->setEnabled(presenter_.TablePrintOffered() && context_.printing != nullptr);
    SetStatus(presenter_.Status());
}

bool frmAddition::eventFilter(QObject* watched, QEvent* event) {
    if (watched != cmbIon_ || event->type() != QEvent::KeyPress || !presenter_.Method().keyInIonBoxMovesOn)
        return Screen::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool typesText = !key.text().isEmpty() && key.key() != Qt::Key_Tab && key.key() != Qt::Key_Escape &&
                           !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!isEnter && !typesText) return Screen::eventFilter(watched, event);
    binder_.Perform([this, isEnter] { presenter_.Form().KeyInIonBox(isEnter); });
    return true;
}

// --- readings on line ----------------------------------------------------------------------------------------

void frmAddition::OpenReading() {
    context_.screens.Close(ScreenCode::frmPtset);
    doubt_.clear();
    Screen& dialog = context_.screens.Load(ScreenCode::frmPtset);
    dialog.move(
        mapToGlobal(QPoint(width() * presenter_.Method().dialogLeft / FullWidth, height() * DialogTop / FullHeight)));
    if (context_.link != nullptr) context_.link->StartLink();
}

void frmAddition::Read() {
    context_.screens.ShowModal(ScreenCode::frmPtset);
}

void frmAddition::CloseReading() {
    context_.screens.Close(ScreenCode::frmPtset);
    if (context_.link != nullptr && context_.link->PortOpen()) context_.link->StopLink();
    ColourTemperature(White);
    GreyValues({BoxAt(AdditionForm::SampleCelsius), BoxAt(AdditionForm::SampleFahrenheit)}, false);
}

void frmAddition::ShowReadingState(const ReadingState& state) {
    doubt_ = ReadingStateText(state);
    if (state_.Get<HardwareSettings>().Channel[2] == 1)
        GreyValues({BoxAt(AdditionForm::SampleCelsius), BoxAt(AdditionForm::SampleFahrenheit)}, !state.IsLive());
}

void frmAddition::ShowTemperature(const std::string& celsius, const std::string& fahrenheit) {
    presenter_.ShowTemperature(celsius, fahrenheit);
}

void frmAddition::ColourTemperature(int colour) {
    for (const int box : {AdditionForm::SampleCelsius, AdditionForm::SampleFahrenheit})
        BoxAt(box)->SetBackground(colour == White ? -1 : colour);
}

bool frmAddition::TakeSample(const std::string& millivolts) {
    presenter_.TakeReading(millivolts, doubt_);
    return true;
}

// --- the screens around --------------------------------------------------------------------------------------

void frmAddition::ShowTable() {
    context_.screens.Show(ScreenCode::frmQSave);
}

void frmAddition::AskSampleNumber() {
    context_.screens.ShowModal(ScreenCode::frmMsg);
}

void frmAddition::ShowCalibrationSetup() {
    context_.screens.Show(ScreenCode::frmsetup);
}

void frmAddition::GoToMenu() {
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void frmAddition::EndProgram() {
    context_.screens.EndProgram();
}

bool frmAddition::Ended() const {
    return context_.screens.Ended();
}

void frmAddition::PrintTable() {
    PrintTableOf(context_, *this);
}

}  // namespace kelvo
