#include "app/CommandLine.h"

#include "engine/Numbers.h"

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
    Flag{QLatin1StringView("--csv"), &CommandLine::asCsv},
    Flag{QLatin1StringView("--contraste"), &CommandLine::contrast},
    Flag{QLatin1StringView("--sin-contraste"), &CommandLine::withoutContrast},
    Flag{QLatin1StringView("--informe"), &CommandLine::report},
    Flag{QLatin1StringView("--memoria"), &CommandLine::sheet},
    Flag{QLatin1StringView("--sobrescribir"), &CommandLine::overwrite},
    Flag{QLatin1StringView("--recuperar"), &CommandLine::recover},
};

/// An option with a value: "--salida CARPETA" or "--salida=CARPETA".
struct ValueOption
{
    QLatin1StringView name;
    QStringView missing; ///< what is told where the value is empty
    void (*take)(CommandLine& line, const QString& value);
};

void takeFolder(CommandLine& line, const QString& folder)
{
    line.reportFolder = folder;
}

/// With a point or, as people type it, a comma.
void takeDeflection(CommandLine& line, const QString& millimetres)
{
    const std::optional<float> deflection = Numbers::tryParse(QString(millimetres).replace(u',', u'.'));
    if (deflection && *deflection > 0.0F)
        line.tableDeflection = static_cast<double>(*deflection);
    else
        line.error = u"La flecha de --flecha tiene que ser un número de milímetros mayor que 0"_s;
}

constexpr std::array VALUE_OPTIONS{
    ValueOption{QLatin1StringView("--salida"), u"Falta la carpeta de --salida", takeFolder},
    ValueOption{QLatin1StringView("--flecha"), u"Faltan los milímetros de --flecha", takeDeflection},
};

/// What makes no sense on a command line.
struct Mistake
{
    bool isMade;
    QString text;
};

/// Options that make no sense together, or without files; empty when all is well.
QString contradiction(const CommandLine& line)
{
    if (line.help || line.version)
        return {};
    const bool writesFile = line.report || line.sheet;
    const bool onlySummary = line.summary && !writesFile;
    const std::array mistakes{
        Mistake{line.asJson && !onlySummary, u"--json solo acompaña a --resumen"_s},
        Mistake{line.asCsv && !onlySummary, u"--csv solo acompaña a --resumen"_s},
        Mistake{line.asJson && line.asCsv, u"--json y --csv se excluyen"_s},
        Mistake{line.contrast && line.withoutContrast, u"--contraste y --sin-contraste se excluyen"_s},
        Mistake{line.withoutContrast && !line.isBatch(),
                u"--sin-contraste solo acompaña a --resumen o --informe"_s},
        Mistake{line.tableDeflection && !line.contrast, u"--flecha solo acompaña a --contraste"_s},
        Mistake{!line.reportFolder.isEmpty() && !writesFile,
                u"--salida solo acompaña a --informe o --memoria"_s},
        Mistake{line.overwrite && line.reportFolder.isEmpty() && !line.sheet,
                u"--sobrescribir solo acompaña a --salida o --memoria"_s},
        Mistake{line.recover && !line.files.isEmpty(), u"--recuperar no admite archivos"_s},
        Mistake{line.recover && line.sheet, u"--memoria y --recuperar se excluyen"_s},
        Mistake{line.isBatch() && line.files.isEmpty() && !line.recover,
                u"Falta al menos un archivo de proyecto"_s},
    };
    for (const Mistake& mistake : mistakes) {
        if (mistake.isMade)
            return mistake.text;
    }
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
        m_result.summary = m_result.summary || m_result.contrast;
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
            m_result.error = option.missing.toString();
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
     velmora-master --resumen [--json | --csv] [--sin-contraste] ARCHIVO…
     velmora-master --contraste [--flecha MM] [--json | --csv] ARCHIVO…
     velmora-master --informe [--salida CARPETA [--sobrescribir]]
                    [--sin-contraste] ARCHIVO…
     velmora-master --memoria [--salida CARPETA] [--sobrescribir] ARCHIVO…
     velmora-master --recuperar [--resumen | --informe]

Cargas en los puntos de cuelgue de un truss de escenario. Sin opciones abre la
ventana, con una pestaña para cada ARCHIVO de proyecto (.rig o .json).

Opciones:
  --resumen         Escribe las cifras y los veredictos de cada proyecto; no
                    necesita pantalla. Un ARCHIVO puede ser una tubería.
  --json            Con --resumen: las escribe como un solo documento JSON.
  --csv             Con --resumen: las escribe como una sola tabla, con punto
                    decimal, para hojas de cálculo.
  --contraste       Como --resumen, y con todo el contraste: lo que lleva cada
                    motor si el truss es una viga continua, bien o mal nivelada.
  --flecha MM       Con --contraste: lo que baja el truss bajo su CPL, según el
                    fabricante; dice qué cambia 1 mm de desnivel.
  --informe         Escribe el informe HTML de todos los proyectos, con un
                    dibujo de cada uno; no necesita pantalla.
  --memoria         Escribe la memoria de cálculo de todos los proyectos, un PDF
                    con cada cifra desarrollada; no necesita pantalla.
  --salida CARPETA  Con --informe o --memoria: dónde lo escribe (si falta, en la
                    carpeta temporal del sistema). Lo que ya hay allí, otro
                    informe o la misma memoria, no lo toca.
  --sobrescribir    Con --salida: lo escribe aunque haya otro, que desde
                    entonces enseñará los dibujos del nuevo. Con --memoria:
                    reemplaza la que haya.
  --sin-contraste   Con --resumen o --informe: solo las cifras de la palanca,
                    sin avisar de lo que las contradice.
  --recuperar       Ofrece lo que la última sesión tenía abierto; con --resumen
                    o --informe, en lugar de los ARCHIVOS.
  -h, --help        Muestra esta ayuda.
  -v, --version     Muestra la versión.
  --                Lo que sigue son archivos, aunque empiece por un guion.

Qué son las cifras: cada carga se reparte entre sus dos motores vecinos por la
regla de la palanca, y la de un voladizo va entera al último motor. El truss
real es una viga continua: con tres motores o más, alguno suele llevar más, y
un voladizo hace palanca. Con 12 m de truss de 8.4 kg/m, motores a 5.3 y 6.7 m
de un extremo y 400 kg en él, la regla dice 450.4 kg y APTO; la estática,
1964.7 kg, y que el otro motor tendría que empujar hacia abajo con 1463.9: el
truss vuelca. Donde el contraste contradice así las cifras, sus frases siguen
al proyecto.

Código de salida: 0 todo está dentro de los límites; 1 algo no lo está, o el
contraste contradice las cifras; 2 un archivo no se puede leer o escribir, o la
orden no es válida.
)"_s;
}

QString CommandLine::versionNumber()
{
    return QStringLiteral(VELMORA_VERSION);
}

bool CommandLine::isBatch() const
{
    return summary || report || sheet;
}
