#pragma once

#include "generators/OutputHandlerBase.h"

#include <QPointer>

class GeneratorOutputForm;

/** Hands every message of a run on to the generator output page. */
class GUIOutputHandler : public OutputHandlerBase
{
    Q_OBJECT

public:
    using OutputHandlerBase::OutputHandlerBase;

    /** The page belongs to the window; without one, messages go nowhere. */
    void setOutputForm(GeneratorOutputForm *form);

    void writeMessage(const QVariant &message) override;
    void writeRaw(const QVariant &message) override;
    QString getLogging() const override;

private:
    QPointer<GeneratorOutputForm> m_form;
};
