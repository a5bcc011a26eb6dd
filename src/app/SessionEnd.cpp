#include "app/SessionEnd.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace kelvo {
namespace {

constexpr int Ends[] = {SIGTERM, SIGHUP, SIGINT};

std::function<void()> keepAtExit;
int writeEnd = -1;

/// Only what a signal handler may do: the event loop does the rest.
void NoteSignal(int) {
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
    errno = before;
}

void Handle(int number, void (*handler)(int)) {
    struct sigaction action = {}, old = {};
    // What whoever started the program has told it to ignore (nohup) stays so.
    if (sigaction(number, nullptr, &old) == 0 && old.sa_handler == SIG_IGN) return;
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

void AtExit() {
    if (keepAtExit) std::exchange(keepAtExit, nullptr)();
}

}  // namespace

SessionEnd::SessionEnd(Steps steps) : steps_(std::move(steps)) {
    if (pipe2(signals_, O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe for signals");
    auto* notifier = new QSocketNotifier(signals_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SessionEnd::TakeSignal);
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this, [this] { steps_.keep(); }, Qt::DirectConnection);
    writeEnd = signals_[1];
    for (const int number : Ends)
        Handle(number, NoteSignal);
    static const int registered = std::atexit(AtExit);
    if (registered == 0) keepAtExit = steps_.keep;
}

SessionEnd::~SessionEnd() {
    for (const int number : Ends)
        Handle(number, SIG_DFL);
    keepAtExit = nullptr;
    writeEnd = -1;
    for (const int end : signals_)
        close(end);
}

void SessionEnd::TakeSignal() {
    char bytes[16];
    while (read(signals_[0], bytes, sizeof bytes) > 0) {
    }
    // A session sends more than one signal; the question of the first may still stand.
    if (std::exchange(ending_, true)) return;
    steps_.end();
}

}  // namespace kelvo
