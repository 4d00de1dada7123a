#include "app/office/Terminal.h"

#include "core/base/Fault.h"

#include <csignal>
#include <iostream>
#include <string>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace Terminal {

namespace {

volatile std::sig_atomic_t interruptedBy = 0;

/// Has an interruption end the reading, so that the terminal shows what is typed again before the program
/// obeys.
class Interruptions {
  public:
    Interruptions() {
        interruptedBy = 0;
        struct sigaction action {};
        action.sa_handler = [](int signal) { interruptedBy = signal; };
        for (std::size_t i = 0; i < std::size(Caught); ++i)
            sigaction(Caught[i], &action, &before[i]);
    }
    ~Interruptions() {
        for (std::size_t i = 0; i < std::size(Caught); ++i)
            sigaction(Caught[i], &before[i], nullptr);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;

  private:
    static constexpr int Caught[] = {SIGINT, SIGTERM, SIGHUP, SIGTSTP};
    struct sigaction before[std::size(Caught)]{};
};

/// The caller's terminal, which shows nothing of what is typed while this exists.
class SilentTerminal {
  public:
    SilentTerminal() : terminal(open("/dev/tty", O_RDWR | O_CLOEXEC)) {
        if (!isThere())
            return;
        tcgetattr(terminal, &shown);
        termios silent = shown;
        silent.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(terminal, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() {
        if (!isThere())
            return;
        tcsetattr(terminal, TCSAFLUSH, &shown);
        close(terminal);
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

    bool isThere() const { return terminal >= 0; }
    void write(const std::string& text) const { (void)!::write(terminal, text.data(), text.size()); }
    /// The line that is typed; nothing if the input ends or is interrupted.
    std::optional<std::string> line() const {
        std::string text;
        char letter = 0;
        while (read(terminal, &letter, 1) == 1) {
            if (letter == '\n')
                return text;
            text += letter;
        }
        return std::nullopt;
    }

  private:
    int terminal;
    termios shown{};
};

std::optional<std::string> typedLine(const QString& prompt) {
    const Interruptions interruptions;
    const SilentTerminal terminal;
    if (!terminal.isThere())
        return std::nullopt;
    terminal.write(prompt.toStdString());
    std::optional<std::string> line = terminal.line();
    terminal.write("\n"); // the user's own was not shown
    return line;
}

[[noreturn]] void refuse(const std::string& why) {
    throw Fault(Fault::PathFileAccess, why);
}

} // namespace

std::optional<QString> readPassword(const QString& prompt) {
    const std::optional<std::string> line = typedLine(prompt);
    if (interruptedBy != 0)
        std::raise(interruptedBy);
    return line ? std::optional(QString::fromStdString(*line)) : std::nullopt;
}

QString readNewPassword(const QString& role) {
    if (isatty(STDIN_FILENO) == 0) {
        std::string line;
        if (!std::getline(std::cin, line) || line.empty())
            refuse("A new user needs a password: a line of the standard input, or --no-password.");
        return QString::fromStdString(line);
    }
    const std::optional<QString> password = readPassword("New password for " + role + ": ");
    if (!password || password->isEmpty())
        refuse("A new user needs a password, or --no-password.");
    if (readPassword("The same once more: ") != password)
        refuse("The two passwords differ.");
    return *password;
}

} // namespace Terminal
