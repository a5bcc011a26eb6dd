#include "help/frminfo2.h"

#include <QtWidgets>

#include "help/PageButton.h"
#include "help/ReadingView.h"
#include "kit/ScreenManager.h"

namespace kelvo {

frminfo2::frminfo2(AppContext& context)
    : Screen(context, ScreenCode::frminfo2, "frminfo2", Kind::Working), sheet_(context.state, context.prompts) {
    reading_ = Named(new ReadingView, "txtadvice");
    reading_->setAccessibleName(tr("Advice, second sheet"));
    Image1_ = Named(new PageButton(true), "Image1");
    auto* first = Named(new QPushButton(tr("First Sheet")), "cmdfirst");
    Image1_->setAccessibleName(first->text());
    Image1_->setToolTip(first->text());
    const auto zoom = [this](double by) {
        reading_->SetZoom(by == 0 ? 1 : reading_->Zoom() * by);
        reading_->setMaximumWidth(reading_->WidestUseful());
    };
    constexpr double Step = 1.15;
    for (const auto& [keys, by] : {std::pair("Ctrl++", Step), {"Ctrl+=", Step}, {"Ctrl+-", 1 / Step}, {"Ctrl+0", 0.0}})
        connect(new QShortcut(QKeySequence(QString::fromLatin1(keys)), this), &QShortcut::activated, this,
                [zoom, by = by] { zoom(by); });
    connect(reading_, &ReadingView::ZoomAsked, this, [zoom](int steps) { zoom(steps > 0 ? Step : 1 / Step); });
    connect(Image1_, &QAbstractButton::clicked, this, &frminfo2::OnEscape);
    connect(first, &QPushButton::clicked, this, &frminfo2::OnEscape);
    auto* foot = new QHBoxLayout;
    foot->addStretch();
    foot->addWidget(Image1_);
    foot->addWidget(first);
    picture_ = Named(new IllustrationView, "imgtopic");
    auto* row = new QHBoxLayout;
    row->setSpacing(14);
    row->addWidget(reading_, 5);
    row->addWidget(picture_, 3);
    Body()->addLayout(row, 1);
    Body()->addLayout(foot);
    first->setFocus();
}

void frminfo2::OnLoad() {
    sheet_.OpenAgain();
    setWindowTitle(ToQt(sheet_.Caption()));
    reading_->Show(sheet_.Second());
    reading_->setMaximumWidth(reading_->WidestUseful());
    picture_->Show(Illustration(sheet_.Picture()));
    picture_->setAccessibleName(tr("Illustration: %1").arg(ToQt(sheet_.Heading())));
}

void frminfo2::OnEscape() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
