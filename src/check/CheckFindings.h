#pragma once

#include "check/ProjectLocation.h"

#include <functional>
#include <utility>

/** Hands every finding on at once, in the order of the rules, and counts the errors among them. */
class CheckFindings
{
public:
    using Sink = std::function<void(const QString &, const ProjectLocation &)>;

    explicit CheckFindings(Sink sink) : m_sink(std::move(sink)) { }

    /** A finding that stops the generation. */
    void error(const QString &text, const ProjectLocation &where = {})
    {
        ++m_errors;
        m_sink(text, where);
    }
    /** A warning, a hint or an information: told, not counted. */
    void note(const QString &text, const ProjectLocation &where = {}) { m_sink(text, where); }
    /** A correction that has been made in the project. */
    void corrected(const QString &text, const ProjectLocation &where = {})
    {
        m_changed = true;
        m_sink(text, where);
    }

    int errors() const { return m_errors; }
    void addErrors(int count) { m_errors += count; }
    /** True when something was corrected. */
    bool hasChanged() const { return m_changed; }

private:
    Sink m_sink;
    int m_errors = 0;
    bool m_changed = false;
};
