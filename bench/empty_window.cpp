// A program that shows an empty main window: the yardstick of the start. Prints the milliseconds since its
// argument.

#include <QApplication>
#include <QMainWindow>
#include <chrono>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  const double started = argc > 1 ? std::atof(argv[1]) : 0.0;
  QApplication application(argc, argv);
  QMainWindow window;
  window.show();
  QCoreApplication::processEvents();
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  std::printf("%f\n", std::chrono::duration<double, std::milli>(now).count() - started);
  std::fflush(stdout);
  std::_Exit(0);
}
