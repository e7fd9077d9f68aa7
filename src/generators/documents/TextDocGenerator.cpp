#include "generators/documents/TextDocGenerator.h"

#include "canopen/COHelper.h"
#include "generators/CodeWriter.h"
#include "generators/documents/DocumentText.h"

using namespace Qt::StringLiterals;

namespace {

/** A text of several lines, its later lines below the first one. */
QString hanging(const QString &text, qsizetype indent)
{
    QString lines = DocumentText::lines(text);
    if (!lines.contains(u'\n'))
        return lines;
    return QString(lines).replace(u'\n', u'\n' + QString(indent, u' '));
}

} // namespace

QString TextDocGenerator::fileName() const
{
    return m_multiLine ? lineFileName(u".txt"_s) : m_projectName + u"_doc.txt"_s;
}

void TextDocGenerator::writeHead(CodeWriter &out)
{
    static const TemplateText title(u"CANopen Object Dictionary Documenation for $project$\n"_s);
    out.fill(title, {{u"project", m_projectName}});
}

void TextDocGenerator::writeObject(CodeWriter &out, const ListedObject &object) const
{
    static const TemplateText head(uR"(
Index:       0x$index$ $name$
DataType:    $type$
ObjectCode:  $code$
Description: $description$
)"_s);
    static const TemplateText entry(uR"(
Sub:          0x$sub$ $name$
DataType:     $type$
DefaultValue: $value$
AccessType:   $access$
PDOMapping:   $mapping$
Description:  $description$
)"_s);
    constexpr qsizetype headIndent = 13;
    constexpr qsizetype entryIndent = 14;
    out.fill(head,
             {{u"index", DocumentText::index(object.index)},
              {u"name", hanging(DocumentText::name(object, m_line), headIndent)},
              {u"type", DocumentText::dataType(object.data.datatype)},
              {u"code", COHelper::objectCode2String(CANopen::ObjectCode(object.data.objecttype))},
              {u"description", hanging(object.data.description, headIndent)}});
    for (const ListedSubIndex &sub : object.subIndices)
        out.fill(entry,
                 {{u"sub", DocumentText::subIndex(sub.number)},
                  {u"name", hanging(DocumentText::name(object, sub, m_line), entryIndent)},
                  {u"type", DocumentText::dataType(sub.data.datatype)},
                  {u"value", hanging(sub.data.defaultvalue, entryIndent)},
                  {u"access", hanging(sub.data.accesstype, entryIndent)},
                  {u"mapping", COHelper::pdoMapping2String(sub.data.pdomapping)},
                  {u"description", hanging(sub.data.description, entryIndent)}});
}
