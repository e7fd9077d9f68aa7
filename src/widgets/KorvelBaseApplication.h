#pragma once

#include <QApplication>

/**
 * The application object of every program of the house.
 *
 * It owns the style of the message log (see MessageLog), the look (KorvelAppStyle) and the name of
 * the settings store: the dynamic property "AppNameWithVersion" holds the application name, a blank
 * and the major version, for example "CANopen NodeSmith 4", so that each major version keeps
 * settings of its own.
 */
class KorvelBaseApplication : public QApplication
{
    Q_OBJECT

public:
    /** A version that does not begin with a number counts as major version 0. */
    KorvelBaseApplication(int &argc, char **argv, const QString &name, const QString &version);
    ~KorvelBaseApplication() override;

    /**
     * Looks back at most `generations` major versions: when this version has no settings yet, it takes
     * over those of the newest former one that has any. Needs the organisation name.
     */
    void initSettings(quint8 generations);

public Q_SLOTS:
    /** Times a run: its log lines carry the time since its start, its end is logged with the duration. */
    void onInstrumentFunctionChanged(bool enable);

private:
    QString settingsName(int majorVersion) const;

    int m_majorVersion;
};
