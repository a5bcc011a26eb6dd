#include "help/frmNorvak.h"

#include <QtWidgets>

#include "core/Routes.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

const char* const About =
    "Kelvo measures ions in solution with ion-selective electrodes, and pH.\n\n"
    "ISE: calibrate an electrode with up to ten standards, or with one standard and a known slope; fit a straight "
    "line, "
    "joined segments or a quadratic; measure samples by direct potentiometry and keep them in a data table.\n\n"
    "Every number on a screen is the text in its box, and the next step reads it back: what you see is what is "
    "calculated with.";

}  // namespace

frmNorvak::frmNorvak(AppContext& context) : Screen(context, ScreenCode::frmNorvak, "frmNorvak", Kind::Dialog) {
    auto* large = Named(new QLabel(QStringLiteral("N O R V")), "lbltxt", 0);
    QFont font = large->font();
    font.setPointSize(34);
    font.setBold(true);
    large->setFont(font);
    large->setAlignment(Qt::AlignHCenter);

    auto* title = Named(new QLabel(QStringLiteral("Kelvo")), "lbltxt", 1);
    title->setProperty("heading", true);
    title->setAlignment(Qt::AlignHCenter);
    auto* version = Named(new QLabel(tr("Version %1").arg(QStringLiteral(KELVO_VERSION))), "lbltxt", 4);
    version->setAlignment(Qt::AlignHCenter);
    auto* maker = Named(new QLabel(tr("Made by the Kelvo team, for the people at the bench.")), "lbltxt", 5);
    maker->setAlignment(Qt::AlignHCenter);

    auto* window = Named(new QPlainTextEdit(QString::fromUtf8(About)), "txtWin");
    window->setReadOnly(true);
    window->setFocusPolicy(Qt::NoFocus);
    window->setFrameShape(QFrame::NoFrame);
    window->viewport()->setAutoFillBackground(false);
    window->setMinimumSize(520, 170);
    window->setAccessibleName(tr("About Kelvo"));

    cmdOK_ = Named(new QPushButton, "cmdOK");
    cmdOK_->setAutoDefault(true);
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &frmNorvak::Pressed);

    Body()->setSpacing(8);
    Body()->addWidget(large);
    Body()->addWidget(title);
    Body()->addWidget(version);
    Body()->addWidget(window, 1);
    Body()->addWidget(maker);
    Body()->addWidget(cmdOK_, 0, Qt::AlignHCenter);
}

void frmNorvak::OnActivate() {
    cmdOK_->setText(ToQt(state_.NorvakCaption));
    cmdOK_->setFocus();
}

void frmNorvak::Pressed() {
    const bool start = state_.NorvakCaption == "Start";
    if (!start) state_.NorvakCaption = "Ok";
    context_.screens.Close(Code());
    if (start) context_.screens.Show(ScreenCode::frmtxt);
}

void frmNorvak::OnEscape() {
    if (state_.NorvakCaption != "Start") {
        Pressed();
    } else if (context_.prompts.Ask(text::SureToExit, true)) {
        context_.screens.EndProgram();
    }
}

}  // namespace kelvo
