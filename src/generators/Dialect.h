#pragma once

#include "generators/TemplateText.h"

#include <QString>
#include <QStringView>

/**
 * The words of one generation of the embedded stack.
 *
 * Generators hold their texts in the words of the V4 stack. A dialect gives them as they are or turns them
 * into those of the older stack: a prefix of a C word ("CORE_CONST" is "CO_CONST" there) or a whole word
 * ("coreStackInit" is "commonStackInit"). Where a text differs in more than words, it is a member here.
 */
class Dialect
{
public:
    static const Dialect &v4();
    static const Dialect &older();

    bool isV4() const { return m_isV4; }

    /** C text in this dialect; comments and strings of it are text like any other. */
    QString text(const QString &v4Text) const;
    /** The title of a generated file, which bears the mark " (V4)" or " (v4)" for the newer stack only. */
    QString title(const QString &v4Title) const;
    /** Joins UDS to the protocols of a line. */
    QStringView udsProtocol() const { return m_udsProtocol; }
    /** The older stack has no protocol words for raw CAN beside another protocol on one line. */
    bool hasRawCanMixtures() const { return m_isV4; }

private:
    constexpr Dialect(bool isV4, QStringView udsProtocol) : m_isV4(isV4), m_udsProtocol(udsProtocol) { }

    bool m_isV4;
    QStringView m_udsProtocol;
};

/** A template in both dialects, taken apart once for each. */
class DialectTemplate
{
public:
    explicit DialectTemplate(const QString &v4Text)
        : m_v4(Dialect::v4().text(v4Text)), m_older(Dialect::older().text(v4Text))
    {
    }

    const TemplateText &in(const Dialect &dialect) const { return dialect.isV4() ? m_v4 : m_older; }

private:
    TemplateText m_v4;
    TemplateText m_older;
};
