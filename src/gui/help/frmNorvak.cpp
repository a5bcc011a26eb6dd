#include "help/frmNorvak.h"

#include <zlib.h>

#include <QtWidgets>
#include <boost/version.hpp>

#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/Routes.h"
#include "kit/ScreenManager.h"
#include "kit/StillLabel.h"
#include "kit/Theme.h"

namespace kelvo {
namespace {

/// What the program is for, as the start screen says it.
QString Purpose() {
    QString text = QString::fromLatin1(text::ProgramTitle);
    constexpr std::size_t Branches = 3;
    for (std::size_t i = 0; i < Branches; ++i)
        text += QStringLiteral("\n\n") + QString::fromLatin1(StartRows()[i].beside);
    return text;
}

/// All that a report of a fault has to say about this installation.
QString Details(const Paths& paths) {
    const QScreen* display = QGuiApplication::primaryScreen();
    const QSize size = display->size();
    return QObject::tr("Kelvo %1").arg(QStringLiteral(KELVO_VERSION)) + QLatin1Char('\n') +
           QObject::tr("Qt %1 (built with %2), zlib %3, Boost.Math %4, JSON for Modern C++")
               .arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR), QString::fromLatin1(zlibVersion()),
                    QStringLiteral(BOOST_LIB_VERSION).replace(QLatin1Char('_'), QLatin1Char('.'))) +
           QLatin1Char('\n') +
           QObject::tr("%1, Linux %2, %3")
               .arg(QSysInfo::prettyProductName(), QSysInfo::kernelVersion(), QLocale().name()) +
           QLatin1Char('\n') +
           QObject::tr("Display %1 × %2, scale %3, %4")
               .arg(size.width())
               .arg(size.height())
               .arg(display->devicePixelRatio())
               .arg(QGuiApplication::platformName()) +
           QLatin1Char('\n') + QObject::tr("Folder: %1").arg(ToQt(paths.AppPath)) + QLatin1Char('\n') +
           QObject::tr("Settings: %1").arg(ToQt(paths.IniPath));
}

}  // namespace

frmNorvak::frmNorvak(AppContext& context) : Screen(context, ScreenCode::frmNorvak, "frmNorvak", Kind::Dialog) {
    auto* large = Named(new StillLabel(QStringLiteral("N O R V")), "lbltxt", 0);
    QFont font = large->font();
    font.setPointSize(34);
    font.setBold(true);
    font.setHintingPreference(QFont::PreferNoHinting);
    large->setFont(font);
    large->setAlignment(Qt::AlignHCenter);

    auto* title = Named(new StillLabel(QStringLiteral("Kelvo")), "lbltxt", 1);
    title->setFont(font);
    // As large as the headings of other screens.
    title->SetScale(0.6);
    title->setAlignment(Qt::AlignHCenter);
    auto* version = Named(new StillLabel(tr("Version %1").arg(QStringLiteral(KELVO_VERSION))), "lbltxt", 4);
    version->setAlignment(Qt::AlignHCenter);
    auto* maker = Named(new StillLabel(tr("Made by the Kelvo team, for the people at the bench.")), "lbltxt", 5);
    maker->setAlignment(Qt::AlignHCenter);

    auto* window = Named(new StillLabel(Purpose()), "txtWin");
    window->setWordWrap(true);
    window->setContentsMargins(4, 4, 4, 4);
    window->setMinimumSize(520, 190);
    window->setAccessibleName(tr("About Kelvo"));

    cmdOK_ = Named(new QPushButton, "cmdOK");
    cmdOK_->setStyleSheet(ButtonStyle());
    cmdOK_->setAutoDefault(true);
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &frmNorvak::Pressed);

    Body()->setSpacing(8);
    Body()->addWidget(large);
    Body()->addWidget(title);
    Body()->addWidget(version);
    Body()->addWidget(window, 1);
    Body()->addWidget(maker);
    auto* foot = new QHBoxLayout;
    foot->addStretch();
    foot->addWidget(cmdOK_);
    if (!state_.Get<Navigation>().AboutIsStart) AddDetails(*foot);
    foot->addStretch();
    Body()->addLayout(foot);
}

void frmNorvak::AddDetails(QHBoxLayout& foot) {
    auto* details = Named(new QPlainTextEdit(Details(state_)), "txtdetails");
    details->setReadOnly(true);
    details->setTabChangesFocus(true);
    details->setLineWrapMode(QPlainTextEdit::NoWrap);
    details->setFixedHeight(8 * details->fontMetrics().lineSpacing());
    details->setAccessibleName(tr("Versions and folders"));
    Body()->addWidget(details);
    auto* copy = Named(new QPushButton(tr("Copy")), "cmdcopy");
    copy->setToolTip(tr("Puts versions and folders on the clipboard"));
    connect(copy, &QPushButton::clicked, this, [this, details] {
        QGuiApplication::clipboard()->setText(details->toPlainText());
        SetStatus(FromQt(tr("Versions and folders are on the clipboard.")));
    });
    foot.addWidget(copy);
}

void frmNorvak::OnActivate() {
    cmdOK_->setText(ToQt(state_.Get<Navigation>().NorvakCaption));
    cmdOK_->setFocus();
}

void frmNorvak::Pressed() {
    const bool start = state_.Get<Navigation>().AboutIsStart;
    if (!start) state_.Get<Navigation>().NorvakCaption = "Ok";
    context_.screens.Close(Code());
    if (start) context_.screens.Show(ScreenCode::frmtxt);
}

void frmNorvak::OnEscape() {
    if (!state_.Get<Navigation>().AboutIsStart) {
        Pressed();
    } else if (context_.prompts.Ask(text::SureToExit, true)) {
        context_.screens.EndProgram();
    }
}

}  // namespace kelvo
