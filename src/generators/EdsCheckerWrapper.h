#pragma once

#include <QObject>
#include <QProcess>
#include <QString>

/** One run of the external EDS checker over one device description. */
class EdsCheckerWrapper : public QObject
{
    Q_OBJECT

public:
    explicit EdsCheckerWrapper(QObject *parent = nullptr);
    /** Ends a check that still runs. */
    ~EdsCheckerWrapper() override;

    /** Takes the path of the checker only where the file exists. */
    void setProgram(const QString &path);
    /** False where there is no such file, no program, or the program does not start. */
    bool start(const QString &edsFile);
    /** All that the checker has written and that was not asked for before. */
    QString output();

Q_SIGNALS:
    void finished();

public Q_SLOTS:
    void processFinished(int exitCode);

private:
    QString m_program;
    QProcess m_process;
};
