#include "calibration/frmQuality.h"

#include <QtWidgets>
#include <array>

#include "calibration/GraphWords.h"
#include "core/Progress.h"
#include "core/StatusMessages.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "tables/QualityReport.h"

namespace kelvo {
namespace {

/// Ground and ink of the verdict's word, by grade; both are set, so that it reads in a dark theme too.
constexpr std::array<const char*, 4> GradeColours = {
    "background: #2e7d32; color: #ffffff;", "background: #f9a825; color: #000000;",
    "background: #b71c1c; color: #ffffff;", "background: #546e7a; color: #ffffff;"};

/// Of the body and of the plot: the window fits a display of 1024 × 720 and cuts none of its texts, and it goes past
/// the lower edge alone of one of 1366 × 768 at a scale of 1.5.
constexpr int LeastHeight = 614, LeastPlotWidth = 360;

QLabel* Wrapped(const char* name, int index = -1) {
    auto* label = Named(new QLabel, name, index);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

frmQuality::frmQuality(AppContext& context)
    : Screen(context, ScreenCode::frmQuality, "frmQuality", Kind::Dialog), quality_(context.state, context.prompts) {
    setWindowTitle(QStringLiteral("Calibration Quality"));
    BuildMenus();
    plot_ = Named(new PictureView(quality_.Page().plot), "picQuality");
    plot_->setAccessibleName(QStringLiteral("Calibration line and residuals"));
    plot_->SetWords([this] { return QualityPlotWords(quality_.Page()); });
    auto* middle = new QHBoxLayout;
    middle->setSpacing(14);
    middle->addWidget(BuildFigures());
    middle->addWidget(plot_, 1);
    Body()->setSpacing(10);
    Body()->addWidget(BuildVerdict());
    Body()->addLayout(middle, 3);
    Body()->addWidget(BuildPoints(), 2);
    // What they would like to have must not make the window scroll while there is room for what they need.
    plot_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    points_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    plot_->setMinimumWidth(LeastPlotWidth);
    Body()->parentWidget()->setMinimumHeight(LeastHeight);
}

void frmQuality::BuildMenus() {
    auto* file = AddMenu("mnuQFile", QStringLiteral("&File"));
    auto* print = AddItem(file, "mnuQPrint", -1, QStringLiteral("&Print"));
    auto* close = AddItem(file, "mnuQClose", -1, QStringLiteral("&Close"));
    auto* edit = AddMenu("mnuQEdit", QStringLiteral("&Edit"));
    auto* copy = AddItem(edit, "mnuQCopy", 0, QStringLiteral("&Copy Figures"));
    auto* picture = AddItem(edit, "mnuQCopy", 1, QStringLiteral("Copy &Picture"));
    auto* view = AddMenu("mnuQView", QStringLiteral("&View"));
    mnuLowEnd_ = AddItem(view, "mnuLowEnd", -1, QStringLiteral("&Low Concentration Fit"));
    mnuCharge_ = AddItem(view, "mnuCharge", -1, QStringLiteral("&Charge of the Ion"));
    mnuLowEnd_->setCheckable(true);
    print->setShortcut(QKeySequence::Print);
    copy->setShortcut(QKeySequence::Copy);
    picture->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    print->setEnabled(context_.printing != nullptr);
    AddHelpMenu();
    connect(print, &QAction::triggered, this, &frmQuality::Print);
    connect(close, &QAction::triggered, this, &frmQuality::OnEscape);
    connect(copy, &QAction::triggered, this, &frmQuality::CopyFigures);
    connect(picture, &QAction::triggered, this, &frmQuality::CopyPicture);
    connect(mnuLowEnd_, &QAction::triggered, this, [this](bool shown) {
        quality_.ShowLowEnd(shown);
        ShowPage();
    });
    connect(mnuCharge_, &QAction::triggered, this, [this] {
        quality_.ChangeCharge();
        ShowPage();
    });
}

QWidget* frmQuality::BuildVerdict() {
    lblWord_ = Named(new QLabel, "lblVerdict");
    lblWord_->setAccessibleName(QStringLiteral("Verdict on the calibration"));
    lblWord_->setAlignment(Qt::AlignCenter);
    // The window opens with the focus on its verdict, which is in sight then on the smallest display as well.
    lblWord_->setFocusPolicy(Qt::TabFocus);
    lblReason_ = Wrapped("lblReason");
    lblCauses_ = Wrapped("lblCauses");
    lblNext_ = Wrapped("lblNext");
    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    for (QLabel* label : {lblReason_, lblCauses_, lblNext_})
        words->addWidget(label);
    words->addStretch();
    auto* frame = Named(new QWidget, "fraVerdict");
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    row->addWidget(lblWord_, 0, Qt::AlignTop);
    row->addLayout(words, 1);
    return frame;
}

QWidget* frmQuality::BuildFigures() {
    auto* frame = Named(new QWidget, "fraFigures");
    figures_ = new QGridLayout(frame);
    figures_->setContentsMargins(0, 0, 0, 0);
    figures_->setHorizontalSpacing(12);
    figures_->setVerticalSpacing(3);
    return frame;
}

QTableWidget* frmQuality::BuildPoints() {
    points_ = Named(new QTableWidget, "grdPoints");
    points_->setAccessibleName(QStringLiteral("Standards beside the line"));
    points_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    points_->setSelectionBehavior(QAbstractItemView::SelectRows);
    points_->setAlternatingRowColors(true);
    points_->setTabKeyNavigation(false);
    points_->verticalHeader()->hide();
    points_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    points_->horizontalHeader()->setHighlightSections(false);
    points_->horizontalHeader()->setStretchLastSection(true);
    constexpr int LeastRows = 4;
    points_->setMinimumHeight((LeastRows + 1) * (fontMetrics().height() + 8) + 4);
    return points_;
}

void frmQuality::OnLoad() {
    quality_.Open();
    ShowPage();
}

void frmQuality::OnActivate() {
    // It stays in front of the screen it belongs to, which goes on working.
    Screen* owner = context_.screens.Find(ScreenCode::fmISEcli);
    if (owner != nullptr && windowHandle() != nullptr) windowHandle()->setTransientParent(owner->windowHandle());
    CalibrationChanged();
    lblWord_->setFocus(Qt::OtherFocusReason);
}

void frmQuality::CalibrationChanged() {
    if (quality_.Refresh()) ShowPage();
}

void frmQuality::OnEscape() {
    context_.screens.Close(Code());
}

void frmQuality::ShowPage() {
    ShowVerdict();
    ShowFigures();
    ShowPoints();
    mnuLowEnd_->setEnabled(quality_.Page().lowEndPossible);
    mnuLowEnd_->setChecked(quality_.LowEndShown());
    mnuCharge_->setEnabled(quality_.HasOwnCharge());
    plot_->update();
}

void frmQuality::ShowVerdict() {
    const Verdict& verdict = quality_.Page().verdict;
    lblWord_->setText(QString::fromUtf8(verdict.Word()));
    lblWord_->setStyleSheet(
        QString::fromLatin1(GradeColours[static_cast<std::size_t>(verdict.grade)]) +
        QStringLiteral("font-size: 20pt; font-weight: 600; border-radius: 6px; padding: 6px 18px;"));
    lblReason_->setText(ToQt(verdict.reason));
    QStringList causes;
    for (const std::string& cause : verdict.causes)
        causes << ToQt(cause);
    lblCauses_->setText(QStringLiteral("Usual causes: ") + causes.join(QStringLiteral("; ")));
    lblCauses_->setVisible(!causes.isEmpty());
    lblNext_->setText(QStringLiteral("What to do: ") + ToQt(verdict.next));
}

void frmQuality::ShowFigures() {
    const auto& figures = quality_.Page().figures;
    for (std::size_t i = values_.size(); i < figures.size(); ++i) {
        const int row = static_cast<int>(i);
        auto* name = Named(new QLabel(QString::fromUtf8(figures[i].name)), "lblFigure", row);
        values_.push_back(Wrapped("txtFigure", row));
        values_[i]->setWordWrap(false);
        beside_.push_back(Wrapped("txtBeside", row));
        QFont bold = values_[i]->font();
        bold.setBold(true);
        values_[i]->setFont(bold);
        values_[i]->setAccessibleName(name->text());
        beside_[i]->setAccessibleName(QStringLiteral("Beside it: ") + name->text());
        beside_[i]->setMinimumWidth(fontMetrics().averageCharWidth() * 22);
        figures_->addWidget(name, row, 0, Qt::AlignTop);
        figures_->addWidget(values_[i], row, 1, Qt::AlignTop);
        figures_->addWidget(beside_[i], row, 2, Qt::AlignTop);
        figures_->setRowStretch(row, 0);
        figures_->setRowStretch(row + 1, 1);
    }
    for (std::size_t i = 0; i < figures.size(); ++i) {
        values_[i]->setText(ToQt(figures[i].value));
        beside_[i]->setText(ToQt(figures[i].beside));
    }
}

void frmQuality::ShowPoints() {
    const QualityPage& page = quality_.Page();
    QStringList heads;
    for (const std::string& head : page.heads)
        heads << ToQt(head);
    points_->setColumnCount(static_cast<int>(heads.size()));
    points_->setHorizontalHeaderLabels(heads);
    points_->setRowCount(static_cast<int>(page.rows.size()));
    for (std::size_t row = 0; row < page.rows.size(); ++row) {
        for (std::size_t col = 0; col < page.rows[row].size(); ++col) {
            auto* item = new QTableWidgetItem(ToQt(page.rows[row][col]));
            const bool mark = col + 1 == page.rows[row].size();
            item->setTextAlignment(Qt::AlignVCenter | (mark ? Qt::AlignLeft : Qt::AlignRight));
            if (page.marked[row]) {
                item->setBackground(QColor(0xFF, 0xE0, 0xB2));
                item->setForeground(Qt::black);
            }
            points_->setItem(static_cast<int>(row), static_cast<int>(col), item);
        }
    }
    points_->resizeColumnsToContents();
}

void frmQuality::Print() {
    if (context_.printing == nullptr) return;
    Progress none;
    PrintQualityDocument(state_, quality_.Page(), {*context_.printing, context_.prompts, context_.clock, none});
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
}

void frmQuality::CopyFigures() {
    QGuiApplication::clipboard()->setText(ToQt(quality_.CopyText()));
    SetStatus("The figures have been copied.");
}

void frmQuality::CopyPicture() {
    constexpr int PixelsWide = 1410, PixelsHigh = 1005;  // of the surface, 9400 by 6700 twips
    QImage image(PixelsWide, PixelsHigh, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPicture(painter, QRectF(image.rect()), quality_.Page().plot);
    painter.end();
    QGuiApplication::clipboard()->setImage(image);
    SetStatus("The picture has been copied.");
}

}  // namespace kelvo
