// The yardstick for scripts/bench-shell.sh: a Qt GUI process that connects to the display and
// waits in its event loop, doing nothing. Inkwarden's idle memory and wake-ups are compared to it.
#include <QGuiApplication>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    return app.exec();
}
