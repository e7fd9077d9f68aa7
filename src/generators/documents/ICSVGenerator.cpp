#include "generators/documents/ICSVGenerator.h"

#include "generators/CodeWriter.h"
#include "generators/documents/CsvText.h"

using namespace Qt::StringLiterals;

QString ICSVGenerator::fileName() const
{
    return lineFileName(u".icsv"_s);
}

void ICSVGenerator::writeHead(CodeWriter &out)
{
    static const TemplateText title(u"# This is an importable ICSV file for the $project$ project.\n"_s);
    out.fill(title, {{u"project", CsvText::oneLine(m_projectName)}});
    if (m_disableDocu)
        out << u"index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,value,"
               "size,implementation,haslimit,lowlimit,uplimit,nvstorage\n";
    else
        out << u"index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,value,"
               "description,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n";
}

void ICSVGenerator::writeObject(CodeWriter &out, const ListedObject &object) const
{
    if (object.hasEntries())
        writeObjectRow(out, object);
    for (const ListedSubIndex &sub : object.subIndices)
        writeSubIndexRow(out, object, sub);
}

void ICSVGenerator::writeObjectRow(CodeWriter &out, const ListedObject &object) const
{
    static const TemplateText row(u"$index$,,$code$,$type$,$name$,,,,,,,,,,,,$description$\n"_s);
    out.fill(row,
             {{u"index", CsvText::index(object.index)},
              {u"code", CsvText::objectCode(object)},
              {u"type", CsvText::dataType(object.data.datatype)},
              {u"name", CsvText::quoted(object.name())},
              {u"description", m_disableDocu ? u"" : u","}});
}

void ICSVGenerator::writeSubIndexRow(CodeWriter &out, const ListedObject &object,
                                     const ListedSubIndex &sub) const
{
    static const TemplateText row(u"$index$,$sub$,VARIABLE,$type$,$name$,$variable$,$access$,$mapping$,$"
                                  u"hasDefault$,$defaultInEds$,$value$,"
                                  "$description$$size$,$implementation$,$hasLimit$,$low$,$up$,$stored$\n"_s);
    const QString description = CsvText::description(sub.data.description);
    out.fill(row,
             {{u"index", CsvText::index(object.index)},
              {u"sub", sub.number},
              {u"type", CsvText::dataType(sub.data.datatype)},
              {u"name", CsvText::quoted(object.name(sub))},
              {u"variable", CsvText::quoted(sub.data.varname)},
              {u"access", CsvText::quoted(sub.data.accesstype)},
              {u"mapping", sub.data.pdomapping.getCSVStringValue()},
              {u"hasDefault", CsvText::flag(sub.data.defaultineds)},
              {u"defaultInEds", CsvText::flag(sub.data.writedefaulttoeds != 0)},
              {u"value", CsvText::quoted(sub.data.defaultvalue)},
              {u"description", m_disableDocu ? QString() : QString(description + u',')},
              {u"size", sub.data.size},
              {u"implementation", CsvText::implementation(sub.data.implementation)},
              {u"hasLimit", CsvText::flag(sub.data.limitineds)},
              {u"low", CsvText::quoted(sub.data.lowlimit)},
              {u"up", CsvText::quoted(sub.data.uplimit)},
              {u"stored", CsvText::flag(sub.data.nvstorage)}});
}
