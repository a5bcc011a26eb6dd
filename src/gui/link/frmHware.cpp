#include "link/frmHware.h"

#include <QtWidgets>
#include <map>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/IonSettings.h"
#include "core/Routes.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "link/PortDialogControl.h"

namespace kelvo {

frmHware::frmHware(AppContext& context)
    : Screen(context, ScreenCode::frmHware, "frmHware", Kind::Panel), presenter_(context.state, context.prompts) {
    setWindowTitle(QStringLiteral("Hardware Configuration"));
    BuildMenus();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(18);
    columns->addWidget(ChannelColumn(), 1);
    columns->addWidget(SettingsColumn(), 1);

    auto* back = Named(new QPushButton(QStringLiteral("Back")), "cmdHware", 0);
    auto* exit = Named(new QPushButton(QStringLiteral("Exit")), "cmdHware", 1);
    back->setDefault(true);
    connect(back, &QPushButton::clicked, this, &frmHware::Back);
    connect(exit, &QPushButton::clicked, this, &frmHware::Exit);
    auto* foot = ButtonRow({back, exit});
    Body()->addLayout(columns, 1);
    Body()->addLayout(foot);
    ConnectSignals();
    Body()->parentWidget()->setMinimumWidth(820);
}

void frmHware::BuildMenus() {
    AddHelpMenu(HelpItems::SetupAndAbout);
}

QGroupBox* frmHware::Frame(int index, const QString& caption) {
    auto* frame = Named(new QGroupBox(caption), "Fram", index);
    Fram_[static_cast<std::size_t>(index)] = frame;
    return frame;
}

void frmHware::AddElectrode(QGridLayout* grid, int row, int check, int number, const QString& caption) {
    const auto c = static_cast<std::size_t>(check);
    const auto n = static_cast<std::size_t>(number);
    Chkchl_[c] = Named(new QCheckBox(caption), "Chkchl", check);
    Label1_[n] = Named(new QLabel(tr("Serial number")), "Label1", number);
    txtNum_[n] = Named(EntryBox::Words(), "txtNum", number);
    txtNum_[n]->setAccessibleName(tr("Serial number of %1").arg(caption));
    Label1_[n]->setBuddy(txtNum_[n]);
    for (QWidget* widget : {static_cast<QWidget*>(Label1_[n]), static_cast<QWidget*>(txtNum_[n])}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
    grid->addWidget(Chkchl_[c], row, 0);
    grid->addWidget(Label1_[n], row, 1, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(txtNum_[n], row, 2);
}

QGroupBox* frmHware::TemperatureFrame() {
    auto* frame = Frame(2, QStringLiteral("Temperature"));
    auto* grid = new QGridLayout(frame);
    lblC_[4] = Named(new QLabel(tr("Default without a sensor")), "lblC", 4);
    lblC_[0] = Named(new QLabel(QStringLiteral("°C")), "lblC", 0);
    lblC_[1] = Named(new QLabel(QStringLiteral("°F")), "lblC", 1);
    grid->addWidget(lblC_[4], 0, 0);
    grid->addWidget(lblC_[0], 0, 1, Qt::AlignRight);
    grid->addWidget(lblC_[1], 0, 2, Qt::AlignRight);
    const std::array<int, 2> checks = {HardwarePresenter::Sensor1, HardwarePresenter::Sensor2};
    for (int i = 0; i < 2; ++i) {
        const auto s = static_cast<std::size_t>(i);
        auto*& check = Chkchl_[static_cast<std::size_t>(checks[s])];
        check = Named(new QCheckBox(QStringLiteral("Temperature Sensor %1").arg(i + 1)), "Chkchl", checks[s]);
        grid->addWidget(check, i + 1, 0);
        for (int unit = 0; unit < 2; ++unit) {
            const int box = i + 2 * unit;
            auto*& entry = txtC_[static_cast<std::size_t>(box)];
            entry = Named(EntryBox::Number(), "txtC", box);
            entry->setAccessibleName(
                tr("Default temperature of channel %1 in %2").arg(i + 1).arg(unit == 0 ? "°C" : "°F"));
            QSizePolicy policy = entry->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            entry->setSizePolicy(policy);
            grid->addWidget(entry, i + 1, 1 + unit);
        }
    }
    return frame;
}

QWidget* frmHware::ChannelColumn() {
    auto* first = Frame(5, QStringLiteral("Channel 1 Electrode"));
    auto* firstGrid = new QGridLayout(first);
    AddElectrode(firstGrid, 0, HardwarePresenter::Ph1, 0, QStringLiteral("pH Electrode 1 or Redox 1"));
    AddElectrode(firstGrid, 1, HardwarePresenter::Ise, 1, QStringLiteral("ISE Electrode"));
    auto* second = Frame(4, QStringLiteral("Channel 2 Electrode"));
    auto* secondGrid = new QGridLayout(second);
    AddElectrode(secondGrid, 0, HardwarePresenter::Ph2, 2, QStringLiteral("pH Electrode 2 or Redox 2"));

    auto* reference = Frame(0, QStringLiteral("Reference Electrode"));
    auto* referenceGrid = new QGridLayout(reference);
    lblC_[2] = Named(new QLabel(tr("Type")), "lblC", 2);
    lblC_[3] = Named(new QLabel(tr("Serial number")), "lblC", 3);
    txtC_[5] = Named(EntryBox::Words(), "txtC", 5);
    txtC_[4] = Named(EntryBox::Words(), "txtC", 4);
    txtC_[5]->setAccessibleName(tr("Reference electrode type"));
    txtC_[4]->setAccessibleName(tr("Reference electrode serial number"));
    lblC_[2]->setBuddy(txtC_[5]);
    lblC_[3]->setBuddy(txtC_[4]);
    referenceGrid->addWidget(lblC_[2], 0, 0);
    referenceGrid->addWidget(txtC_[5], 0, 1);
    referenceGrid->addWidget(lblC_[3], 1, 0);
    referenceGrid->addWidget(txtC_[4], 1, 1);

    auto* column = new QWidget;
    auto* box = new QVBoxLayout(column);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(first);
    box->addWidget(second);
    box->addWidget(TemperatureFrame());
    box->addWidget(reference);
    box->addStretch();
    return column;
}

QGroupBox* frmHware::IsabFrame() {
    isabFrame_ = Named(new QGroupBox(QStringLiteral("ISAB")), "FramISAB");
    auto* box = new QVBoxLayout(isabFrame_);
    txtISAB_ = Named(EntryBox::Words(), "txtISAB");
    txtISAB_->setAccessibleName(tr("ISAB and notes"));
    box->addWidget(txtISAB_);
    return isabFrame_;
}

QGroupBox* frmHware::GeneralFrame() {
    auto* frame = Named(new QGroupBox(tr("Reports")), "FramReports");
    auto* grid = new QGridLayout(frame);
    txtOp_ = Named(EntryBox::Words(), "txtOp");
    auto* opLabel = new QLabel(tr("Operator"));
    opLabel->setBuddy(txtOp_);
    txtOp_->setAccessibleName(opLabel->text());
    CmbFormat_ = Named(new QComboBox, "CmbFormat");
    CmbFormat_->addItems({QStringLiteral("Europe"), QStringLiteral("USA")});
    auto* formatLabel = new QLabel(tr("Date format"));
    formatLabel->setBuddy(CmbFormat_);
    CmbFormat_->setAccessibleName(formatLabel->text());
    Label2_ = Named(new QLabel, "Label2", 0);
    chkPrt_ = Named(new QCheckBox(tr("The printer is a network printer")), "chkPrt");
    grid->addWidget(opLabel, 0, 0);
    grid->addWidget(txtOp_, 0, 1, 1, 2);
    grid->addWidget(formatLabel, 1, 0);
    grid->addWidget(CmbFormat_, 1, 1);
    grid->addWidget(Label2_, 1, 2);
    grid->addWidget(chkPrt_, 2, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    return frame;
}

QWidget* frmHware::SettingsColumn() {
    auto* ion = Frame(1, QStringLiteral("Detected Ion"));
    auto* ionBox = new QVBoxLayout(ion);
    cmbIon_ = Named(new QComboBox, "cmbIon");
    cmbIon_->setEditable(true);
    cmbIon_->setInsertPolicy(QComboBox::NoInsert);
    cmbIon_->setCompleter(nullptr);
    auto* edit = new EntryBox;
    edit->setMaxLength(64);
    cmbIon_->setLineEdit(edit);
    // On leaving, the list would turn a typed name into the row that differs from it by case alone: another weight.
    disconnect(edit, &QLineEdit::editingFinished, cmbIon_, nullptr);
    cmbIon_->setAccessibleName(ion->title());
    edit->setAccessibleName(ion->title());
    for (int i = 0; i < CustomIonRow; ++i)
        cmbIon_->addItem(ToQt(state_.Get<IonSettings>().Ions.names[static_cast<std::size_t>(i)]));
    cmbIon_->addItem(QStringLiteral("Custom"));
    ionBox->addWidget(cmbIon_);

    auto* port = Frame(3, QStringLiteral("Port Setting"));
    auto* portBox = new QVBoxLayout(port);
    cmbPort_ = Named(new QComboBox, "cmbPort");
    cmbPort_->setAccessibleName(port->title());
    if (state_.Get<HardwareSettings>().InterfaceKind == 2)
        for (int i = 1; i <= 4; ++i)
            cmbPort_->addItem(QStringLiteral("Communication Port (COM%1)").arg(i), i);
    else
        cmbPort_->addItems({QString(), QString()});
    portBox->addWidget(cmbPort_);

    auto* column = new QWidget;
    auto* box = new QVBoxLayout(column);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(ion);
    box->addWidget(IsabFrame());
    box->addWidget(port);
    box->addWidget(GeneralFrame());
    box->addStretch();
    return column;
}

void frmHware::ConnectSignals() {
    for (int i = 0; i < 5; ++i)
        connect(Chkchl_[static_cast<std::size_t>(i)], &QCheckBox::toggled, this, [this, i](bool on) {
            if (!HwareReady_) return;
            ReadWidgets();
            presenter_.Click(i, on);
            ShowForm();
        });
    for (int i = 0; i < 6; ++i) {
        auto* box = txtC_[static_cast<std::size_t>(i)];
        connect(box, &EntryBox::Entered, this, [this, i] { Enter(i); });
        if (i == HardwarePresenter::Fahrenheit1 || i == HardwarePresenter::Fahrenheit2)
            connect(box, &EntryBox::textEdited, this, [this] {
                ReadWidgets();
                SetStatus(presenter_.StatusMessage());
            });
        if (i > HardwarePresenter::Celsius2) continue;
        connect(box, &EntryBox::FocusLost, this, [this, i] {
            if (!HwareReady_ || !txtC_[static_cast<std::size_t>(i)]->isEnabled()) return;
            ReadWidgets();
            presenter_.ConvertTemperature(i);
            ShowForm();
        });
    }
    for (auto* box : {txtNum_[0], txtNum_[1], txtNum_[2], txtISAB_, txtOp_})
        connect(box, &EntryBox::Entered, this, [this] { focusNextChild(); });
    auto* edit = static_cast<EntryBox*>(cmbIon_->lineEdit());
    connect(edit, &EntryBox::Entered, this, [this] { focusNextChild(); });
    connect(edit, &QLineEdit::textEdited, this, [this](const QString& text) {
        presenter_.TypeIon(FromQt(text));
        SetStatus(presenter_.StatusMessage());
    });
    connect(cmbIon_, &QComboBox::activated, this, &frmHware::IonChosen);
    connect(cmbPort_, &QComboBox::activated, this, &frmHware::PortChosen);
    connect(CmbFormat_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (!HwareReady_) return;
        state_.Get<HardwareSettings>().DateFormat = static_cast<std::int16_t>(index);
        ShowDate();
    });
    TabThrough({Chkchl_[0], txtNum_[0], Chkchl_[1], txtNum_[1], Chkchl_[3], txtNum_[2], Chkchl_[2],
                txtC_[0],   txtC_[2],   Chkchl_[4], txtC_[1],   txtC_[3],   txtC_[5],   txtC_[4],
                cmbIon_,    txtISAB_,   cmbPort_,   txtOp_,     CmbFormat_, chkPrt_});
}

void frmHware::OnLoad() {
    HwareReady_ = false;
    presenter_.Load();
    cmbPort_->setCurrentIndex(presenter_.portIndex);
    CmbFormat_->setCurrentIndex(presenter_.formatIndex);
    chkPrt_->setChecked(presenter_.networkPrinter);
    ShowForm();
    ShowDate();
    HwareReady_ = true;
}

void frmHware::OnActivate() {
    Chkchl_[presenter_.checked[HardwarePresenter::Ise] ? 1 : 0]->setFocus(Qt::TabFocusReason);
}

void frmHware::ShowDate() {
    Label2_->setText(ToQt(DateTimeText(context_.clock.Now(), state_.Get<HardwareSettings>().DateFormat)));
}

void frmHware::ReadWidgets() {
    for (std::size_t i = 0; i < 3; ++i)
        presenter_.number[i] = txtNum_[i]->Text();
    for (std::size_t i = 0; i < 6; ++i)
        presenter_.txtC[i] = txtC_[i]->Text();
    presenter_.isab = txtISAB_->Text();
    presenter_.oper = txtOp_->Text();
    presenter_.portIndex = cmbPort_->currentIndex();
    presenter_.formatIndex = CmbFormat_->currentIndex();
    presenter_.networkPrinter = chkPrt_->isChecked();
}

void frmHware::ShowForm() {
    for (std::size_t i = 0; i < 5; ++i) {
        const QSignalBlocker quiet(Chkchl_[i]);
        Chkchl_[i]->setChecked(presenter_.checked[i]);
    }
    for (std::size_t i = 0; i < 3; ++i) {
        if (txtNum_[i]->Text() != presenter_.number[i]) txtNum_[i]->SetText(presenter_.number[i]);
        txtNum_[i]->setVisible(presenter_.numberVisible[i]);
        Label1_[i]->setVisible(presenter_.numberVisible[i]);
    }
    for (std::size_t i = 0; i < 6; ++i)
        if (txtC_[i]->Text() != presenter_.txtC[i]) txtC_[i]->SetText(presenter_.txtC[i]);
    for (const int channel : {1, 2})
        for (const int unit : {0, 2})
            txtC_[static_cast<std::size_t>(channel - 1 + unit)]->setVisible(presenter_.TemperatureVisible(channel));
    Chkchl_[HardwarePresenter::Sensor2]->setVisible(presenter_.sensor2Visible);
    Chkchl_[HardwarePresenter::Sensor2]->setEnabled(presenter_.sensor2Enabled);
    for (const std::size_t i : {0, 1, 4})
        lblC_[i]->setVisible(presenter_.TemperatureLabelsVisible());
    Fram_[0]->setVisible(presenter_.iseVisible);
    Fram_[1]->setVisible(presenter_.iseVisible);
    cmbIon_->setEnabled(presenter_.iseVisible);
    isabFrame_->setVisible(presenter_.iseVisible);
    if (txtISAB_->Text() != presenter_.isab) txtISAB_->SetText(presenter_.isab);
    if (txtOp_->Text() != presenter_.oper) txtOp_->SetText(presenter_.oper);
    const QSignalBlocker quiet(cmbIon_);
    cmbIon_->setCurrentIndex(presenter_.ionIndex);
    if (presenter_.ionIndex == NoIon || presenter_.ionIndex == CustomIonRow)
        static_cast<EntryBox*>(cmbIon_->lineEdit())->SetText(presenter_.ionText);
    SetStatus(presenter_.StatusMessage());
}

void frmHware::IonChosen(int index) {
    if (!HwareReady_) return;
    ReadWidgets();
    presenter_.SelectIon(index);
    if (index == CustomIonRow) {
        context_.screens.ShowModal(ScreenCode::frmInput);
        presenter_.CustomIonDone();
    }
    ShowForm();
}

void frmHware::PortChosen() {
    if (!HwareReady_ || state_.Get<HardwareSettings>().InterfaceKind != 2 || context_.link == nullptr) return;
    const CommPort& port = context_.link->Port();
    if (cmbPort_->currentData() == port.PortNumber) return;
    ShowPortDialogModal(context_);
    if (context_.screens.Ended()) return;
    const int row = port.Dialog.portIndex;
    if (row < cmbPort_->count()) cmbPort_->setCurrentIndex(row);
}

void frmHware::Enter(int box) {
    ReadWidgets();
    presenter_.ConvertTemperature(box);
    ShowForm();
    if (box == HardwarePresenter::RefType) {
        txtC_[HardwarePresenter::RefNumber]->setFocus(Qt::TabFocusReason);
        return;
    }
    focusNextChild();
}

void frmHware::Back() {
    HwareReady_ = false;
    ReadWidgets();
    if (!presenter_.Back()) {
        using Missing = HardwarePresenter::Missing;
        const std::map<Missing, QWidget*> boxes = {{Missing::Electrode, Chkchl_[HardwarePresenter::Ph1]},
                                                   {Missing::Temperature1, txtC_[HardwarePresenter::Celsius1]},
                                                   {Missing::Ion, cmbIon_},
                                                   {Missing::Temperature2, txtC_[HardwarePresenter::Celsius2]}};
        boxes.at(presenter_.missing)->setFocus(Qt::TabFocusReason);
        HwareReady_ = true;
        return;
    }
    context_.screens.Show(ScreenCode::frmtxt);
    context_.screens.Close(Code());
}

void frmHware::Exit() {
    HwareReady_ = false;
    ReadWidgets();
    presenter_.CommonReads();
    if (context_.prompts.Ask(text::SureToExit, true)) {
        context_.screens.EndProgram();
        return;
    }
    HwareReady_ = true;
}

}  // namespace kelvo
