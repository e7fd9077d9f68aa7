#include "generators/declarations/DefineNames.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar underscore = u'_';

bool isNameCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

/** Knows which names are in use and which of them have several meanings. */
class Names
{
public:
    void add(const DefineNames::Request &request)
    {
        const auto known = m_numbers.constFind(request.name);
        if (known == m_numbers.constEnd())
            m_numbers.insert(request.name, request.number);
        else if (*known != request.number)
            m_ambiguous.insert(request.name);
    }
    bool isAmbiguous(const QString &name) const { return m_ambiguous.contains(name); }

    /** The name with its place behind it; with a number behind that where another define is called so. */
    QString placed(const DefineNames::Request &request)
    {
        const bool isSeparated = request.name.endsWith(underscore);
        const QString name = request.name + (isSeparated ? QString() : QString(underscore)) + request.place;
        QString free = name;
        for (int number = 2; m_numbers.contains(free); ++number)
            free = name + underscore + QString::number(number);
        m_numbers.insert(free, request.number);
        return free;
    }

private:
    QHash<QString, quint32> m_numbers;
    QSet<QString> m_ambiguous;
};

} // namespace

QString DefineNames::identifier(QStringView prefix, QStringView text)
{
    QString name = prefix.toString();
    name.reserve(prefix.size() + text.size());
    for (const QChar c : text) {
        if (isNameCharacter(c))
            name += c;
        else if (!name.endsWith(underscore))
            name += underscore;
    }
    return name;
}

QList<DefineNames::Define> DefineNames::resolve(const QList<Request> &requests, const Request &reserved)
{
    Names names;
    names.add(reserved);
    for (const Request &request : requests)
        names.add(request);
    QList<Define> defines;
    defines.reserve(requests.size());
    QSet<QString> written{reserved.name};
    for (const Request &request : requests) {
        if (names.isAmbiguous(request.name)) {
            defines.append({names.placed(request), request.value});
        } else if (!written.contains(request.name)) {
            written.insert(request.name);
            defines.append({request.name, request.value});
        }
    }
    return defines;
}
