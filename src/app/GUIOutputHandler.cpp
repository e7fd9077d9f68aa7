#include "app/GUIOutputHandler.h"

#include "forms/output/GeneratorOutputForm.h"

void GUIOutputHandler::setOutputForm(GeneratorOutputForm *form)
{
    m_form = form;
}

void GUIOutputHandler::writeMessage(const QVariant &message)
{
    if (m_form)
        m_form->writeMessage(message);
}

void GUIOutputHandler::writeRaw(const QVariant &message)
{
    if (m_form)
        m_form->writeRaw(message);
}

QString GUIOutputHandler::getLogging() const
{
    return m_form ? m_form->getLogging() : QString();
}
