#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the user asked for on the command line. Known before any application object exists, so
/// that everything but the window works where there is no display.
struct CommandLine
{
    bool help = false;
    bool version = false;
    bool summary = false;                  ///< print the figures
    bool asJson = false;                   ///< … as JSON
    bool asCsv = false;                    ///< … as a table for spreadsheets
    bool contrast = false;                 ///< … with all of the second opinion; implies `summary`
    bool withoutContrast = false;          ///< tell nothing of it, not even where it contradicts the figures
    std::optional<double> tableDeflection; ///< of the truss under its CPL, by its maker [mm], above 0
    bool report = false;                   ///< write the HTML report
    bool sheet = false;                    ///< write the calculation sheet
    bool overwrite = false;                ///< … also where an older one is, or would show other drawings
    bool recover = false;                  ///< what the last session had open, instead of files
    QString reportFolder;                  ///< empty for the temporary directory
    QStringList files;                     ///< project files, in the order given
    QString error;                         ///< one line in Spanish; empty when the command line can be obeyed

public: // construction
    /// Reads `arguments`, which do not hold the program's name.
    static CommandLine parse(const QStringList& arguments);

public: // queries
    /// The usage, in Spanish.
    static QString usage();
    /// The program's version, such as "2.0.0".
    static QString versionNumber();
    /// True when the user asked for work that needs no window.
    [[nodiscard]] bool isBatch() const;
};
