#include "link/frmPortSettings.h"

#include <QtWidgets>

#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

void Fill(QComboBox* box, const std::vector<std::string>& rows, int index) {
    const QSignalBlocker quiet(box);
    QStringList texts;
    for (const std::string& row : rows)
        texts << ToQt(row);
    bool same = box->count() == texts.size();
    for (int i = 0; same && i < box->count(); ++i)
        same = box->itemText(i) == texts[i];
    if (!same) {
        box->clear();
        box->addItems(texts);
    }
    box->setCurrentIndex(index);
}

QGroupBox* Frame(const char* name, const QString& caption, QComboBox* box) {
    auto* frame = Named(new QGroupBox(caption), name);
    box->setMinimumWidth(150);
    box->setAccessibleName(caption);
    (new QVBoxLayout(frame))->addWidget(box);
    return frame;
}

}  // namespace

frmPortSettings::frmPortSettings(AppContext& context)
    : Screen(context, ScreenCode::frmPortSettings, "frmPortSettings", Kind::Dialog), port_(context.link->Port()) {
    setWindowTitle(QStringLiteral("Comm Port Setup"));
    cboPort_ = Named(new QComboBox, "cboPort");
    cboBitRate_ = Named(new QComboBox, "cboBitRate");
    txtStatus_ = Named(new QLineEdit, "txtStatus");
    txtStatus_->setReadOnly(true);
    txtStatus_->setMinimumWidth(460);
    txtStatus_->setAccessibleName(tr("Status"));
    lblAdvice_ = Named(new QLabel, "lblAdvice");
    lblAdvice_->setAccessibleName(tr("Advice"));
    lblAdvice_->setWordWrap(true);
    lblAdvice_->hide();
    lblAdvice_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* ok = Named(new QPushButton(QStringLiteral("OK")), "cmdOK");
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdCancel");
    ok->setDefault(true);
    for (auto* button : {ok, cancel})
        button->setAutoDefault(true);

    auto* frames = new QHBoxLayout;
    frames->addWidget(Frame("fraPort", QStringLiteral("Comm Port"), cboPort_));
    frames->addWidget(Frame("fraBitRate", QStringLiteral("Bit Rate"), cboBitRate_));
    auto* foot = new QHBoxLayout;
    foot->addStretch();
    foot->addWidget(ok);
    foot->addWidget(cancel);
    Body()->setSpacing(10);
    Body()->addLayout(frames);
    Body()->addWidget(txtStatus_);
    Body()->addWidget(lblAdvice_);
    Body()->addStretch();
    Body()->addLayout(foot);

    connect(cboPort_, &QComboBox::activated, this, [this](int index) { port_.SelectPort(index); });
    connect(cboBitRate_, &QComboBox::activated, this, [this](int index) { port_.SelectRate(index); });
    connect(ok, &QPushButton::clicked, this, [this] { port_.cmdOK(); });
    connect(cancel, &QPushButton::clicked, this, [this] { port_.cmdCancel(); });
}

void frmPortSettings::OnLoad() {
    port_.Changed = [this] { ShowDialog(); };
    ShowDialog();
}

void frmPortSettings::OnUnload() {
    port_.Changed = nullptr;
}

void frmPortSettings::OnActivate() {
    cboPort_->setFocus(Qt::TabFocusReason);
}

void frmPortSettings::ShowDialog() {
    const PortDialog& dialog = port_.Dialog;
    Fill(cboPort_, dialog.cboPort, dialog.portIndex);
    Fill(cboBitRate_, dialog.cboBitRate, dialog.rateIndex);
    if (FromQt(txtStatus_->text()) != dialog.txtStatus) {
        txtStatus_->setText(ToQt(dialog.txtStatus));
        txtStatus_->setCursorPosition(0);
    }
    lblAdvice_->setText(ToQt(dialog.advice));
    if (lblAdvice_->isHidden() != dialog.advice.empty()) {
        lblAdvice_->setVisible(!dialog.advice.empty());
        GrowToContent();
    }
}

}  // namespace kelvo
