#include "io/RecoveryFile.h"

#include "io/RecoveryProject.h"
#include "io/SafeFile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto FORMAT = "velmoraRecovery"_L1;

/// In the order of `KeptProject::Reason`.
constexpr std::array<QLatin1StringView, 4> REASONS{"closed"_L1, "reset"_L1, "replaced"_L1, "overwritten"_L1};

KeptProject::Reason readReason(const QString& word)
{
    const auto* found = std::find(REASONS.begin(), REASONS.end(), word);
    return found != REASONS.end() ? static_cast<KeptProject::Reason>(found - REASONS.begin())
                                  : KeptProject::Reason::Closed;
}

QString timeText(const QDateTime& time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QDateTime readTime(const QJsonValue& value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs).toLocalTime();
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject headObject(const RecoverySession& session)
{
    return {
        {FORMAT, RecoveryFile::VERSION}, {u"program"_s, session.program},     {u"process"_s, session.process},
        {u"boot"_s, session.boot},       {u"time"_s, timeText(session.time)}, {u"current"_s, session.current},
    };
}

RecoverySession readSession(const QJsonObject& object)
{
    RecoverySession session;
    session.program = object["program"_L1].toString();
    session.process = object["process"_L1].toInteger();
    session.boot = object["boot"_L1].toString();
    session.time = readTime(object["time"_L1]);
    session.current = object["current"_L1].toInt();
    const QJsonArray tabs = object["tabs"_L1].toArray();
    for (const auto& tab : tabs)
        session.tabs.append(RecoveryProject::fromJson(tab.toObject()));
    const QJsonArray kept = object["kept"_L1].toArray();
    for (const auto& value : kept) {
        const QJsonObject one = value.toObject();
        session.kept.append({RecoveryProject::fromJson(one), readTime(one["time"_L1]),
                             readReason(one["reason"_L1].toString())});
    }
    return session;
}

} // namespace

QByteArray RecoveryFile::textOf(const ProjectState& project)
{
    return compact(RecoveryProject::toJson(project));
}

QByteArray RecoveryFile::textOf(const KeptProject& kept)
{
    QJsonObject object = RecoveryProject::toJson(kept.project);
    object[u"time"_s] = timeText(kept.time);
    object[u"reason"_s] = REASONS.at(static_cast<std::size_t>(kept.reason));
    return compact(object);
}

QByteArray RecoveryFile::join(const RecoverySession& session, const QByteArrayList& tabs,
                              const QByteArrayList& kept)
{
    QByteArray document = compact(headObject(session));
    document.chop(1); // the closing brace
    document += ",\n\"tabs\":[\n" + tabs.join(",\n") + "\n],\n\"kept\":[\n" + kept.join(",\n") + "\n]}\n";
    return document;
}

QByteArray RecoveryFile::toBytes(const RecoverySession& session)
{
    QByteArrayList tabs;
    for (const ProjectState& tab : session.tabs)
        tabs.append(textOf(tab));
    QByteArrayList kept;
    for (const KeptProject& project : session.kept)
        kept.append(textOf(project));
    return join(session, tabs, kept);
}

RecoveryFile::Content RecoveryFile::fromBytes(const QByteArray& bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    const double version = object[FORMAT].toDouble();
    if (version > VERSION)
        return {Failure::Newer, {}};
    if (version < 1)
        return {Failure::Damaged, {}};
    return {Failure::None, readSession(object)};
}

RecoveryFile::Content RecoveryFile::read(const QString& path)
{
    if (!SafeFile::isOwnFile(path))
        return {Failure::NotOwn, {}};
    const std::optional<QByteArray> bytes = SafeFile::read(path, LARGEST);
    return bytes ? fromBytes(*bytes) : Content{Failure::Unreadable, {}};
}
