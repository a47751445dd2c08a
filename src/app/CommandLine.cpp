#include "app/CommandLine.h"

using namespace Qt::StringLiterals;

namespace
{

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
            m_result.error = contradiction();
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
        else if (!readFlag(argument) && !readFolder(argument))
            m_result.error = u"Opción desconocida: "_s + argument;
    }

    bool readFlag(const QString& argument)
    {
        bool* flag = flagOf(argument);
        if (flag != nullptr)
            *flag = true;
        return flag != nullptr;
    }

    bool* flagOf(const QString& argument)
    {
        if (argument == "--help"_L1 || argument == "-h"_L1)
            return &m_result.help;
        if (argument == "--version"_L1 || argument == "-v"_L1)
            return &m_result.version;
        if (argument == "--resumen"_L1)
            return &m_result.summary;
        if (argument == "--json"_L1)
            return &m_result.asJson;
        if (argument == "--informe"_L1)
            return &m_result.report;
        return nullptr;
    }

    bool readFolder(const QString& argument)
    {
        constexpr QLatin1StringView OPTION("--salida");
        constexpr QLatin1StringView OPTION_WITH_VALUE("--salida=");
        if (argument == OPTION)
            m_result.reportFolder = m_next < m_arguments.size() ? m_arguments.at(m_next++) : QString();
        else if (argument.startsWith(OPTION_WITH_VALUE))
            m_result.reportFolder = argument.mid(OPTION_WITH_VALUE.size());
        else
            return false;

        m_folderGiven = true;
        if (m_result.reportFolder.isEmpty())
            m_result.error = u"Falta la carpeta de --salida"_s;
        return true;
    }

    /// Options that make no sense together, or without files; empty when all is well.
    [[nodiscard]] QString contradiction() const
    {
        if (m_result.help || m_result.version)
            return {};
        if (m_result.asJson && (!m_result.summary || m_result.report))
            return u"--json solo acompaña a --resumen"_s;
        if (m_folderGiven && !m_result.report)
            return u"--salida solo acompaña a --informe"_s;
        if (m_result.isBatch() && m_result.files.isEmpty())
            return u"Falta al menos un archivo de proyecto"_s;
        return {};
    }

private: // data
    const QStringList& m_arguments;
    qsizetype m_next = 0;
    bool m_onlyFiles = false;
    bool m_folderGiven = false;
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
