#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <memory>

#include "app/AppState.h"
#include "core/Dialogs.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "devices/ScreenPrint.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "tables/TablePresenter.h"
#include "utilities/frmacft.h"
#include "utilities/frmcnvs.h"
#include "utilities/frmselity.h"

// Key press to result, repaint included: the promise is 1 ms. Each round replaces the text of one box by a digit,
// presses Enter, and lets the window paint what has changed; that is two keys, and every box of the sheet follows.

namespace kelvo {
namespace {

/// Nothing is said in these rounds; a message would stop them.
class Silent : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override { throw std::runtime_error(text); }
    bool Ask(const std::string& text, bool, const std::string&) override { throw std::runtime_error(text); }
    bool AskToSave(const std::string&, const std::string&) override { return true; }
    std::optional<std::string> Input(const std::string& title, const std::string&, const std::string&) override {
        throw std::runtime_error(title);
    }
};

struct Bench {
    Bench() { ApplyTheme(*qApp); }

    AppState state;
    Silent prompts;
    QtFileChooser files;
    QtClock clock;
    ScreenManager screens{state};
    DataTable dataTable;
    TablePresenter table{state, dataTable, prompts, files, clock};
    AppContext context{state, prompts, files, clock, screens, table};
};

template <typename Form>
std::unique_ptr<Form> Shown(Bench& bench, int ion) {
    auto screen = std::make_unique<Form>(bench.context);
    screen->OnLoad();
    screen->Present();
    screen->resize(1050, 656);
    screen->template findChild<QComboBox*>()->setCurrentIndex(ion);
    QCoreApplication::processEvents();
    return screen;
}

void Press(QWidget* widget, int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &press);
}

void Paint(QWidget& window) {
    QEvent paint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &paint);
}

void Put(QWidget& screen, const char* box, const char* text) {
    auto* widget = screen.findChild<EntryBox*>(QString::fromUtf8(box));
    widget->setText(QString::fromUtf8(text));
    Press(widget, Qt::Key_Return);
}

/// A round that paints nothing would measure half the promise.
class PaintCounter : public QObject {
 public:
    int paints = 0;

 protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
};

void Rounds(benchmark::State& state, QWidget& screen, const char* box) {
    auto* widget = screen.findChild<EntryBox*>(QString::fromUtf8(box));
    int digit = 0;
    Paint(screen);
    PaintCounter counter;
    widget->installEventFilter(&counter);
    for (auto _ : state) {
        // The key that is timed is Enter, from its press to the painted result; the digit before it is another key.
        state.PauseTiming();
        widget->setFocus();
        widget->selectAll();
        digit = digit % 5 + 1;
        Press(widget, Qt::Key_0 + digit, QString::number(digit));
        Paint(screen);
        state.ResumeTiming();
        Press(widget, Qt::Key_Return);
        Paint(screen);
    }
    if (counter.paints < static_cast<int>(state.iterations())) state.SkipWithError("the window did not paint");
}

void BM_ConversionKeyToResult(benchmark::State& state) {
    Bench bench;
    auto screen = Shown<frmcnvs>(bench, 3);
    Put(*screen, "txtv(2)", "1.2");
    Rounds(state, *screen, "txtv(0)");
}
BENCHMARK(BM_ConversionKeyToResult)->Unit(benchmark::kMicrosecond);

void BM_ActivityKeyToResult(benchmark::State& state) {
    Bench bench;
    auto screen = Shown<frmacft>(bench, 3);
    Put(*screen, "txtac(1)", "0.1");
    Rounds(state, *screen, "txtac(3)");
}
BENCHMARK(BM_ActivityKeyToResult)->Unit(benchmark::kMicrosecond);

void BM_SelectivityKeyToResult(benchmark::State& state) {
    Bench bench;
    constexpr int carbonate = 8;
    auto screen = Shown<frmselity>(bench, carbonate);
    Put(*screen, "txtC", "7");
    for (int row = 0; row < 8; ++row)
        Put(*screen, QStringLiteral("txtif(%1)").arg(row).toUtf8().constData(), "2");
    Rounds(state, *screen, "txtC");
}
BENCHMARK(BM_SelectivityKeyToResult)->Unit(benchmark::kMicrosecond);

void BM_ScreenAsPdf(benchmark::State& state) {
    Bench bench;
    auto screen = Shown<frmselity>(bench, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(ScreenAsPdf(*screen, QStringLiteral("24/11/2026 20:49")));
}
BENCHMARK(BM_ScreenAsPdf)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvo
