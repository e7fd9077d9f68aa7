#pragma once

#include "widgets/TextFile.h"

#include <QThread>

/** Reads one file beside the window, so that neither its size nor a slow disk holds the window up. */
class TextFileLoader : public QThread
{
    Q_OBJECT

public:
    explicit TextFileLoader(QString path, QObject *parent = nullptr);
    /** Breaks the reading off. */
    ~TextFileLoader() override;

Q_SIGNALS:
    /** The file has been read, or could not be; not sent for a reading that was broken off. */
    void loaded(const TextFile &file);

protected:
    void run() override;

private:
    const QString m_path;
};
