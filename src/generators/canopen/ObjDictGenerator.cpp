#include "generators/canopen/ObjDictGenerator.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/FileHeader.h"
#include "generators/GeneratedFile.h"
#include "generators/StaleFiles.h"
#include "generators/canopen/DataVariablesWriter.h"
#include "generators/canopen/DescriptionWriter.h"
#include "generators/canopen/MappingTableWriter.h"
#include "generators/canopen/ObjectDictionaryHead.h"
#include "generators/canopen/StackInitWriter.h"
#include "generators/canopen/StringDefaultsWriter.h"
#include "generators/canopen/ValueTableWriter.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char *userHeader = "gen_user.h";

constexpr quint8 valuesWritten = 25; // percent
constexpr quint8 descriptionsWritten = 50;
constexpr quint8 assignmentsWritten = 75;

} // namespace

ObjectDictionaryGenerator::ObjectDictionaryGenerator(const Dialect &dialect, bool compactArrays)
    : m_dialect(dialect), m_request{.compactArrays = compactArrays}
{
}

ObjectDictionaryGenerator::~ObjectDictionaryGenerator() = default;

QString ObjectDictionaryGenerator::fileName() const
{
    return u"gen_objdict.c"_s;
}

bool ObjectDictionaryGenerator::prepare()
{
    if (!m_database) {
        fail(u"There is no project."_s);
        return false;
    }
    readMultiLineOption();
    m_request.forceMultiLine = m_forceMultiLine;
    m_view = ObjectDictionaryView::read(*m_database, m_request);
    m_multiLine = m_view.settings.multiLine;
    m_stackInit = std::make_unique<StackInitWriter>(*m_database, m_view, m_dialect);
    const QString flaw = m_view.flaw();
    if (!flaw.isEmpty())
        fail(flaw);
    return flaw.isEmpty();
}

void ObjectDictionaryGenerator::write(CodeWriter &out)
{
    writeUserHeader();
    ObjectDictionaryHead(m_view, m_dialect, fileHeader()).write(out, m_outputDir);
    m_stackInit->writeStaticIndications(out);
    DescriptionWriter(m_view, m_dialect).writeCounts(out);
    writeValueTables(out);
    Q_EMIT progress(valuesWritten);
    writeObjects(out);
    writeMappingTables(out);
    writeDataVariables(out);
    m_stackInit->writeInit(out);
    writeTail(out);
}

FileHeader ObjectDictionaryGenerator::fileHeader() const
{
    return {m_projectName, m_version};
}

void ObjectDictionaryGenerator::writeUserHeader()
{
    if (!m_view.settings.stringDefaults) {
        removeStaleFiles(m_outputDir, std::span(&userHeader, 1));
        return;
    }
    GeneratedFile file(targetPath(QLatin1StringView(userHeader)));
    if (file.open()) {
        CodeWriter out(file.stream());
        ObjectDictionaryHead(m_view, m_dialect, fileHeader()).writeUserHeader(out);
    }
    if (!file.close())
        fail(file.errorString());
}

void ObjectDictionaryGenerator::writeValueTables(CodeWriter &out) const
{
    const ValueTableWriter tables(m_view, m_dialect);
    tables.writeManagedVariables(out);
    tables.writeConstants(out);
    StringDefaultsWriter(m_view, m_dialect).writeValues(out);
    tables.writeApplicationVariables(out);
}

void ObjectDictionaryGenerator::writeObjects(CodeWriter &out)
{
    const DescriptionWriter objects(m_view, m_dialect);
    objects.writeDescriptions(out);
    Q_EMIT progress(descriptionsWritten);
    objects.writeAssignments(out);
    Q_EMIT progress(assignmentsWritten);
}

void ObjectDictionaryGenerator::writeMappingTables(CodeWriter &out) const
{
    if (!m_view.settings.forJ1939Server)
        MappingTableWriter(m_view, m_dialect).write(out);
}

void ObjectDictionaryGenerator::writeDataVariables(CodeWriter &out) const
{
    ::writeDataVariables(out, m_view, m_dialect);
}

void ObjectDictionaryGenerator::writeTail(CodeWriter &out) const
{
    if (!m_view.settings.forJ1939Server)
        m_stackInit->writeOverwriteFunction(out);
    StringDefaultsWriter(m_view, m_dialect).writeFunction(out);
}

ObjDictGeneratorV4::ObjDictGeneratorV4(bool compactArrays)
    : ObjectDictionaryGenerator(Dialect::v4(), compactArrays)
{
}

ObjDictGenerator::ObjDictGenerator(bool compactArrays)
    : ObjectDictionaryGenerator(Dialect::older(), compactArrays)
{
}
