#include "adapters/ncurses/screen.h"

#include <curses.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "adapters/ncurses/given_back.h"

namespace mirelo::ncurses {

namespace {

constexpr short kUpPair = 1;
constexpr short kDownPair = 2;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
Stream StreamOf(int descriptor, const char* mode) {
  return {descriptor < 0 ? nullptr : ::fdopen(descriptor, mode), &std::fclose};
}

// An opening of its own of the terminal that the person sits at, so that not to wait on it is nobody else's
// matter.
Stream OpenKeys() {
  const int descriptor = ::open("/dev/tty", O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  return StreamOf(descriptor, "r");
}

Stream OpenPicture() {
  const int descriptor = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  return StreamOf(descriptor, "w");
}

// In both of the ways in which a terminal may send them, whichever it was told.
void DefineKeys() {
  constexpr struct {
    const char* text;
    int code;
  } kKeys[] = {{"\033[A", KEY_UP},    {"\033[B", KEY_DOWN}, {"\033[C", KEY_RIGHT},  {"\033[D", KEY_LEFT},
               {"\033OA", KEY_UP},    {"\033OB", KEY_DOWN}, {"\033OC", KEY_RIGHT},  {"\033OD", KEY_LEFT},
               {"\033[H", KEY_HOME},  {"\033[F", KEY_END},  {"\033OH", KEY_HOME},   {"\033OF", KEY_END},
               {"\033[1~", KEY_HOME}, {"\033[4~", KEY_END}, {"\033[5~", KEY_PPAGE}, {"\033[6~", KEY_NPAGE}};
  for (const auto& [text, code] : kKeys) ::define_key(text, code);
}

std::optional<terminal::Key> KeyOf(int code) {
  using Kind = terminal::Key::Kind;
  switch (code) {
    case KEY_UP:
      return terminal::Key{Kind::Up, '\0'};
    case KEY_DOWN:
      return terminal::Key{Kind::Down, '\0'};
    case KEY_LEFT:
      return terminal::Key{Kind::Left, '\0'};
    case KEY_RIGHT:
      return terminal::Key{Kind::Right, '\0'};
    case KEY_PPAGE:
      return terminal::Key{Kind::PageUp, '\0'};
    case KEY_NPAGE:
      return terminal::Key{Kind::PageDown, '\0'};
    case KEY_HOME:
      return terminal::Key{Kind::Home, '\0'};
    case KEY_END:
      return terminal::Key{Kind::End, '\0'};
    default:
      break;
  }
  if (code > 0 && code < 128) return terminal::Key{Kind::Character, static_cast<char>(code)};
  return std::nullopt;
}

}  // namespace

struct Screen::Terminal {
  Stream out = OpenPicture();
  Stream in = OpenKeys();
  SCREEN* screen = nullptr;
  // Keys are read from what is never shown: from the window that is, reading would first show what was left
  // to be shown, and wait where the terminal takes no output.
  WINDOW* keys = nullptr;
  std::string locale = std::setlocale(LC_CTYPE, nullptr);
  std::unique_ptr<GivenBack> given_back;

  ~Terminal() {
    if (screen != nullptr) {
      ResumeOutput(::fileno(out.get()));
      if (keys != nullptr) ::delwin(keys);
      ::endwin();
      ::delscreen(screen);
    }
    std::setlocale(LC_CTYPE, locale.c_str());
  }
};

std::unique_ptr<Screen> Screen::Open(bool in_color) {
  auto terminal = std::make_unique<Terminal>();
  if (terminal->out == nullptr || terminal->in == nullptr || ::isatty(STDOUT_FILENO) != 1) return nullptr;
  if (::tcgetpgrp(::fileno(terminal->in.get())) != ::getpgrp()) return nullptr;
  auto given_back = std::make_unique<GivenBack>(::fileno(terminal->in.get()));
  std::setlocale(LC_CTYPE, "C.UTF-8");  // as all that the program prints
  terminal->screen = ::newterm(nullptr, terminal->out.get(), terminal->in.get());
  if (terminal->screen == nullptr) return nullptr;
  given_back->Arm();
  terminal->given_back = std::move(given_back);
  if (::tigetstr("cup") == nullptr || ::tigetstr("clear") == nullptr) return nullptr;
  ::cbreak();
  ::noecho();
  ::nonl();
  ::curs_set(0);
  terminal->keys = ::newpad(1, 1);
  if (terminal->keys == nullptr) return nullptr;
  ::keypad(terminal->keys, TRUE);
  DefineKeys();
  ::nodelay(terminal->keys, TRUE);
  ::set_escdelay(25);
  if (in_color && ::has_colors()) {
    ::start_color();
    ::use_default_colors();
    ::init_pair(kUpPair, COLOR_GREEN, -1);
    ::init_pair(kDownPair, COLOR_RED, -1);
  }
  return std::unique_ptr<Screen>(new Screen(std::move(terminal)));
}

Screen::Screen(std::unique_ptr<Terminal> terminal) : terminal_(std::move(terminal)) {}
Screen::~Screen() = default;

terminal::ScreenSize Screen::Size() {
  winsize size{};
  if (::ioctl(::fileno(terminal_->out.get()), TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0 &&
      (size.ws_row != LINES || size.ws_col != COLS)) {
    ::resizeterm(size.ws_row, size.ws_col);
    ::clearok(curscr, TRUE);
  }
  return {static_cast<std::size_t>(LINES), static_cast<std::size_t>(COLS)};
}

bool Screen::TakesOutput() const {
  pollfd ready{::fileno(terminal_->out.get()), POLLOUT, 0};
  return ::poll(&ready, 1, 0) == 1;
}

void Screen::Show(const terminal::Picture& picture) {
  if (!TakesOutput()) return;
  ::werase(stdscr);
  int number = 0;
  for (const terminal::PictureLine& line : picture) {
    if (::wmove(stdscr, number++, 0) == ERR) break;
    for (const terminal::Piece& piece : line) {
      const terminal::TextStyle& style = piece.style;
      attr_t attributes = A_NORMAL;
      if (style.bold) attributes |= A_BOLD;
      if (style.dim) attributes |= A_DIM;
      if (style.reverse) attributes |= A_REVERSE;
      const short pair = style.tone == terminal::Tone::Up     ? kUpPair
                         : style.tone == terminal::Tone::Down ? kDownPair
                                                              : short{0};
      ::wattr_set(stdscr, attributes, pair, nullptr);
      ::waddnstr(stdscr, piece.text.Bytes().c_str(), -1);
    }
    ::wattr_set(stdscr, A_NORMAL, 0, nullptr);
  }
  ::wrefresh(stdscr);
}

int Screen::KeyDescriptor() const { return ::fileno(terminal_->in.get()); }

std::vector<terminal::Key> Screen::Keys() {
  std::vector<terminal::Key> keys;
  for (int code = ::wgetch(terminal_->keys); code != ERR; code = ::wgetch(terminal_->keys)) {
    if (const auto key = KeyOf(code)) keys.push_back(*key);
  }
  return keys;
}

void Screen::GiveBack() {
  ResumeOutput(::fileno(terminal_->out.get()));
  ::endwin();
}

void Screen::TakeBack() {
  ResumeOutput(::fileno(terminal_->out.get()));
  if (!::isendwin()) ::endwin();
  ::clearok(curscr, TRUE);
  ::wrefresh(stdscr);
}

}  // namespace mirelo::ncurses
