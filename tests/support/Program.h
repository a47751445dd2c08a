#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The program as its user starts it, in a process of its own.
namespace Support
{

using namespace Qt::StringLiterals;

struct Result
{
    int code = -1;
    QString out;
    QString err;
    QByteArray bytes; ///< of `out`
};

/// An environment in which no window can appear.
inline QProcessEnvironment withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name :
         {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s, u"XDG_RUNTIME_DIR"_s})
        environment.remove(name);
    static const QTemporaryDir home; // not that of whoever runs the test
    environment.insert(u"XDG_DATA_HOME"_s, home.path());
    return environment;
}

/// Runs the program itself, without a display unless `environment` has one.
inline Result run(const QStringList& arguments, const QProcessEnvironment& environment = withoutDisplay())
{
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(VELMORA_EXECUTABLE), arguments);
    constexpr int PATIENCE = 60'000; // [ms]
    if (!program.waitForFinished(PATIENCE) || program.exitStatus() != QProcess::NormalExit) {
        program.kill();
        program.waitForFinished();
        return {};
    }
    const QByteArray bytes = program.readAllStandardOutput();
    return {program.exitCode(), QString::fromUtf8(bytes), QString::fromUtf8(program.readAllStandardError()),
            bytes};
}

inline QString put(const QTemporaryDir& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(name));
    return file.fileName();
}

} // namespace Support
