#include "generators/CppOutput.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

void copyDictionary(const QString &folder)
{
    const QString target = folder + "/gen_objdict.cpp"_L1;
    QFile::remove(target);
    QFile::copy(folder + "/gen_objdict.c"_L1, target);
}

void convertUserHeader(const QString &folder)
{
    QFile source(folder + "/gen_user.h"_L1);
    if (!source.exists())
        return;
    QFile target(folder + "/gen_user.hpp"_L1);
    target.remove();
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly))
        return;
    // Bytes, not text: whatever encoding the user's comments have stays.
    target.write(source.readAll().replace("RET_T", "extern \"C\" RET_T"));
}

} // namespace

void writeCppOutput(const QString &folder)
{
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isWritable())
        return;
    copyDictionary(folder);
    convertUserHeader(folder);
}
