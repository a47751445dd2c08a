#include "io/MarkupNames.h"

using namespace Qt::StringLiterals;

namespace
{

/// What follows a "<" that a browser does not take for the sign.
bool opensMarkup(QChar next)
{
    return (next >= u'a' && next <= u'z') || (next >= u'A' && next <= u'Z') || next == u'/' || next == u'!'
           || next == u'?';
}

} // namespace

bool MarkupNames::isMarkup(const QString& name)
{
    for (qsizetype at = name.indexOf(u'<'); at != -1; at = name.indexOf(u'<', at + 1)) {
        if (at + 1 < name.size() && opensMarkup(name.at(at + 1)))
            return true;
    }
    return false;
}

std::optional<QString> MarkupNames::first(const ProjectState& project)
{
    if (isMarkup(project.tabName))
        return project.tabName;
    for (const Motor& motor : project.motors) {
        if (isMarkup(motor.modelName))
            return motor.modelName;
    }
    for (const ActiveLoad& load : project.loads) {
        if (isMarkup(load.name))
            return load.name;
    }
    return std::nullopt;
}
