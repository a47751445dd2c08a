#include "FirstFrame.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QTextStream>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

/// Tells when a window has been exposed; it is painted while that is handled.
class ExposeWatcher : public QObject
{
public: // construction
    using QObject::QObject;

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow*>(watched)->isExposed())
            QTimer::singleShot(0, this, &QCoreApplication::quit);
        return false;
    }
};

/// The value [kB] of the line that begins with "VmRSS:".
QByteArray residentMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return "0";
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').at(1);
    }
    return "0";
}

} // namespace

int FirstFrame::report(QWidget& window)
{
    window.winId(); // makes the native window, so that it can be watched from the beginning
    ExposeWatcher watcher;
    window.windowHandle()->installEventFilter(&watcher);
    window.show();
    const int code = QApplication::exec();

    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    QTextStream(stdout) << std::chrono::nanoseconds(now).count() << ' ' << residentMemory() << '\n';
    return code;
}
