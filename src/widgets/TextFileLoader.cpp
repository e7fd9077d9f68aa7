#include "widgets/TextFileLoader.h"

TextFileLoader::TextFileLoader(QString path, QObject *parent) : QThread(parent), m_path(std::move(path))
{
    qRegisterMetaType<TextFile>();
}

TextFileLoader::~TextFileLoader()
{
    requestInterruption();
    wait();
}

void TextFileLoader::run()
{
    const TextFile file = TextFile::read(m_path, [this] { return isInterruptionRequested(); });
    if (file.failure != TextFile::Failure::Cancelled)
        Q_EMIT loaded(file);
}
