#include "app/Appearance.h"
#include "app/Batch.h"
#include "app/CommandLine.h"
#include "app/Console.h"
#include "app/EndSignals.h"
#include "app/SheetBatch.h"
#include "io/RecoveryFolder.h"
#include "io/RecoveryList.h"
#include "ui/MainWindow.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

/// Whether a window has somewhere to appear. Qt would abort the program without.
bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    if (!qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return true;
    // A platform chosen by hand may do without a desktop; these two are named by people who have one,
    // and stay named when they come back over the network.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return !platform.isEmpty() && !platform.startsWith("xcb") && !platform.startsWith("wayland");
#else
    return true;
#endif
}

int refuse(const QString& reason)
{
    Console::printError(u"velmora-master: "_s + Console::printable(reason));
    Console::printError(CommandLine::usage());
    return Batch::FAILED;
}

int tell(const QString& text)
{
    return Console::print(text) ? Batch::ALL_WITHIN_LIMITS : Batch::FAILED;
}

int summarize(const CommandLine& options, const Batch::Input& input, int& argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    return Batch::summarize(options, input);
}

/// The folder of a desktop session, where there is none: the application object would make one among the
/// temporary files and leave it there.
class SessionFolder
{
public: // construction
    SessionFolder()
    {
        if (!qEnvironmentVariableIsEmpty(NAME))
            return;
        m_folder.emplace();
        if (m_folder->isValid())
            qputenv(NAME, QFile::encodeName(m_folder->path()));
    }
    ~SessionFolder()
    {
        if (m_folder)
            qunsetenv(NAME);
    }
    SessionFolder(const SessionFolder&) = delete;
    SessionFolder& operator=(const SessionFolder&) = delete;

private: // data
    static constexpr const char* NAME = "XDG_RUNTIME_DIR";
    std::optional<QTemporaryDir> m_folder;
};

/// What is painted, by `work`, without a window.
int paint(int (*work)(const CommandLine&, const Batch::Input&), const CommandLine& options,
          const Batch::Input& input, int& argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const SessionFolder session;
    Appearance::chooseStyle();
    // The application object looks for the folders of a desktop session, and warns where there is none.
    QLoggingCategory::setFilterRules(u"default.warning=false"_s);
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QString());
    Appearance::apply(application);
    return work(options, input);
}

int runBatch(const CommandLine& options, int& argc, char* argv[])
{
    const Batch::Input input = Batch::read(options);
    int code = Batch::ALL_WITHIN_LIMITS;
    if (options.summary)
        code = summarize(options, input, argc, argv);
    if (options.report)
        code = std::max(code, paint(Batch::report, options, input, argc, argv));
    if (options.sheet)
        code = std::max(code, paint(SheetBatch::write, options, input, argc, argv));
    return code;
}

/// Whether so many files can be opened as any work takes: Qt ends a program that finds none left.
bool canOpenFiles()
{
    constexpr int ENOUGH = 16;
    const QString empty = u"/dev/null"_s;
    std::array<QFile, ENOUGH> files;
    return !QFile::exists(empty) || std::all_of(files.begin(), files.end(), [&empty](QFile& file) {
        file.setFileName(empty);
        return file.open(QIODevice::ReadOnly);
    });
}

/// What a window would show, told without one.
int runWithoutDisplay(CommandLine options, int& argc, char* argv[])
{
    if (options.files.isEmpty() && !options.recover) {
        Console::printError(
            u"velmora-master: No hay pantalla (DISPLAY, WAYLAND_DISPLAY) donde abrir la ventana; "
            "--help dice qué se puede hacer sin ella."_s);
        return Batch::FAILED;
    }
    Console::printError(u"velmora-master: No hay pantalla (DISPLAY, WAYLAND_DISPLAY) donde abrir la ventana; "
                        "se escriben las cifras y el informe."_s);
    options.summary = true;
    options.report = true;
    return runBatch(options, argc, argv);
}

/// What the first picture does not need.
void begin(MainWindow& window, const CommandLine& options)
{
    window.keepRecovery(RecoveryFolder::path());
    if (options.recover)
        window.recover(RecoveryChoice::Last);
    else if (!options.files.isEmpty())
        window.openProjectFiles(options.files);
}

int runWindow(const CommandLine& options, int& argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);

    MainWindow window;
    window.show();
    QTimer::singleShot(0, &window, [&] { begin(window, options); });
    const EndSignals signalled([&window] {
        window.saveRecovery();
        QApplication::exit();
    });
    const int code = QApplication::exec();
    if (!signalled.haveCome())
        window.endRecovery();
    return code;
}

} // namespace

int main(int argc, char* argv[])
{
    Appearance::nameProgram();
    const CommandLine options = CommandLine::parse(argumentsOf(argc, argv));
    int noArguments = 1; // Qt would take some of them for its own

    if (!options.error.isEmpty())
        return refuse(options.error);
    if (options.help)
        return tell(CommandLine::usage());
    if (options.version)
        return tell(u"Velmora Master "_s + CommandLine::versionNumber() + u'\n');
    if (!canOpenFiles()) {
        Console::printError(u"velmora-master: No se pueden abrir bastantes archivos (ulimit -n)."_s);
        return Batch::FAILED;
    }
    if (options.isBatch())
        return runBatch(options, noArguments, argv);
    if (!hasDisplay())
        return runWithoutDisplay(options, noArguments, argv);
    return runWindow(options, noArguments, argv);
}
