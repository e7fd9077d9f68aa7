#include "generators/documents/CSVGenerator.h"

#include "generators/CodeWriter.h"
#include "generators/documents/CsvText.h"

using namespace Qt::StringLiterals;

QString CSVGenerator::fileName() const
{
    return lineFileName(u".csv"_s);
}

void CSVGenerator::writeHead(CodeWriter &out)
{
    out << u"Index,Sub,EDSname,Datatype,Access,Value,varname,LowLimit,UpLimit,hasDefault,hasLimit,refuseRead,"
           "refuseWrite,defaultInEDS,implementation,Size,ObjectCode,mapable\n";
}

void CSVGenerator::writeObject(CodeWriter &out, const ListedObject &object) const
{
    static const TemplateText row(
        u"$index$,$sub$,$name$,$type$,$access$,$value$,$variable$,$low$,$up$,$hasDefault$,$hasLimit$,$"
        u"refuseRead$,"
        "$refuseWrite$,$defaultInEds$,$implementation$,$size$,$code$,$mapping$\n"_s);
    for (const ListedSubIndex &sub : object.subIndices)
        out.fill(row,
                 {{u"index", CsvText::index(object.index)},
                  {u"sub", sub.number},
                  {u"name", CsvText::plain(object.name(sub))},
                  {u"type", CsvText::dataType(sub.data.datatype)},
                  {u"access", CsvText::plain(sub.data.accesstype)},
                  {u"value", CsvText::plain(sub.data.defaultvalue)},
                  {u"variable", CsvText::plain(sub.data.varname)},
                  {u"low", CsvText::plain(sub.data.lowlimit)},
                  {u"up", CsvText::plain(sub.data.uplimit)},
                  {u"hasDefault", CsvText::flag(sub.data.defaultineds)},
                  {u"hasLimit", CsvText::flag(sub.data.limitineds)},
                  {u"refuseRead", CsvText::flag(sub.data.refuseread)},
                  {u"refuseWrite", CsvText::flag(sub.data.refusewrite)},
                  {u"defaultInEds", CsvText::flag(sub.data.writedefaulttoeds != 0)},
                  {u"implementation", CsvText::implementation(sub.data.implementation)},
                  {u"size", sub.data.size},
                  {u"code", CsvText::objectCode(object)},
                  {u"mapping", sub.data.pdomapping.getCSVStringValue()}});
}
