#include "generators/FileGenerator.h"

#include "generators/CodeWriter.h"
#include "generators/GeneratedFile.h"

bool FileGenerator::isOutputWritable()
{
    return isTargetWritable(fileName());
}

GeneratorStatus FileGenerator::startGeneration()
{
    return startThread(jobName());
}

GeneratorStatus FileGenerator::requestStop()
{
    return stopThread();
}

void FileGenerator::doJob()
{
    const JobFrame frame(*this);
    if (!prepare())
        return;
    GeneratedFile file(targetPath(fileName()));
    if (file.open()) {
        CodeWriter out(file.stream());
        write(out);
    }
    if (!file.close() && !m_failed)
        fail(file.errorString());
}
