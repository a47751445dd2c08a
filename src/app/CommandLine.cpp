#include "app/CommandLine.h"

#include <array>

using namespace Qt::StringLiterals;

namespace
{

/// An option that stands for itself.
struct Flag
{
    QLatin1StringView name;
    bool CommandLine::*given;
};

constexpr std::array FLAGS{
    Flag{QLatin1StringView("--help"), &CommandLine::help},
    Flag{QLatin1StringView("-h"), &CommandLine::help},
    Flag{QLatin1StringView("--version"), &CommandLine::version},
    Flag{QLatin1StringView("-v"), &CommandLine::version},
    Flag{QLatin1StringView("--resumen"), &CommandLine::summary},
    Flag{QLatin1StringView("--json"), &CommandLine::asJson},
    Flag{QLatin1StringView("--informe"), &CommandLine::report},
};

/// An option with a value: "--salida CARPETA" or "--salida=CARPETA".
struct ValueOption
{
    QLatin1StringView name;
    QLatin1StringView missing; ///< what is told where the value is empty
    void (*take)(CommandLine& line, const QString& value);
};

void takeFolder(CommandLine& line, const QString& folder)
{
    line.reportFolder = folder;
}

constexpr std::array VALUE_OPTIONS{
    ValueOption{QLatin1StringView("--salida"), QLatin1StringView("Falta la carpeta de --salida"), takeFolder},
};

/// Options that make no sense together, or without files; empty when all is well.
QString contradiction(const CommandLine& line)
{
    if (line.help || line.version)
        return {};
    if (line.asJson && (!line.summary || line.report))
        return u"--json solo acompaña a --resumen"_s;
    if (!line.reportFolder.isEmpty() && !line.report)
        return u"--salida solo acompaña a --informe"_s;
    if (line.isBatch() && line.files.isEmpty())
        return u"Falta al menos un archivo de proyecto"_s;
    return {};
}

/// Goes through the arguments one by one.
class Reader
{
public: // construction
    explicit Reader(const QStringList& arguments)
        : m_arguments(arguments)
    {
    }

public: // commands
    CommandLine read()
    {
        while (m_next < m_arguments.size() && m_result.error.isEmpty())
            readArgument(m_arguments.at(m_next++));
        if (m_result.error.isEmpty())
            m_result.error = contradiction(m_result);
        return m_result;
    }

private: // helpers
    void readArgument(const QString& argument)
    {
        const bool isOption = !m_onlyFiles && argument.size() > 1 && argument.startsWith(u'-');
        if (!isOption)
            m_result.files.append(argument);
        else if (argument == "--"_L1)
            m_onlyFiles = true;
        else if (!readFlag(argument) && !readValueOption(argument))
            m_result.error = u"Opción desconocida: "_s + argument;
    }

    bool readFlag(const QString& argument)
    {
        for (const Flag& flag : FLAGS) {
            if (argument == flag.name) {
                m_result.*flag.given = true;
                return true;
            }
        }
        return false;
    }

    bool readValueOption(const QString& argument)
    {
        const QString name = argument.section(u'=', 0, 0);
        for (const ValueOption& option : VALUE_OPTIONS) {
            if (name == option.name) {
                const bool isInside = argument.size() > name.size();
                readValue(option, isInside ? argument.mid(name.size() + 1) : nextArgument());
                return true;
            }
        }
        return false;
    }

    void readValue(const ValueOption& option, const QString& value)
    {
        if (value.isEmpty())
            m_result.error = option.missing;
        else
            option.take(m_result, value);
    }

    /// Empty where there is none.
    QString nextArgument()
    {
        return m_next < m_arguments.size() ? m_arguments.at(m_next++) : QString();
    }

private: // data
    const QStringList& m_arguments;
    qsizetype m_next = 0;
    bool m_onlyFiles = false;
    CommandLine m_result;
};

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    return Reader(arguments).read();
}

QString CommandLine::usage()
{
    return uR"(Uso: velmora-master [ARCHIVO…]
     velmora-master --resumen [--json] ARCHIVO…
     velmora-master --informe [--salida CARPETA] ARCHIVO…

Cargas en los puntos de cuelgue de un truss de escenario. Sin opciones abre la
ventana, con una pestaña para cada ARCHIVO de proyecto (.rig o .json).

Opciones:
  --resumen         Escribe las cifras y los veredictos de cada proyecto; no
                    necesita pantalla.
  --json            Con --resumen: las escribe como un solo documento JSON.
  --informe         Escribe el informe HTML de todos los proyectos, con un dibujo
                    de cada uno; no necesita pantalla.
  --salida CARPETA  Con --informe: dónde lo escribe (si falta, en la carpeta
                    temporal del sistema).
  -h, --help        Muestra esta ayuda.
  -v, --version     Muestra la versión.
  --                Lo que sigue son archivos, aunque empiece por un guion.

Código de salida: 0 todo está dentro de los límites; 1 algo no lo está; 2 un
archivo no se puede leer o escribir, o la orden no es válida.
)"_s;
}

QString CommandLine::versionNumber()
{
    return QStringLiteral(VELMORA_VERSION);
}

bool CommandLine::isBatch() const
{
    return summary || report;
}
