#include "generators/canopen/StackInitWriter.h"

#include "generators/CodeWriter.h"
#include "generators/CommonGeneratorHelper.h"
#include "generators/canopen/OverwriteFunction.h"
#include "generators/canopen/SettingValues.h"
#include "generators/canopen/StackInitContext.h"
#include "generators/canopen/StackInitDictionary.h"
#include "generators/canopen/StackInitFunctions.h"
#include "generators/canopen/StaticIndications.h"

struct StackInitWriter::Private
{
    Private(ObjectDataBase &store, const ObjectDictionaryView &view, const Dialect &dialect,
            const SettingValues &general)
        : indications(general, view), context{.view = view,
                                              .dialect = dialect,
                                              .settings =
                                                  StackInitSettings::read(general, view.settings.canFd)}
    {
        GeneratorTextBlocks(&store, dialect, nullptr).commonInitBlock(context.commonInit);
    }

    StaticIndications indications;
    StackInitContext context;
};

StackInitWriter::StackInitWriter(ObjectDataBase &store, const ObjectDictionaryView &view,
                                 const Dialect &dialect)
    : d(std::make_unique<Private>(store, view, dialect, SettingValues::general(store)))
{
}

StackInitWriter::~StackInitWriter() = default;

void StackInitWriter::writeStaticIndications(CodeWriter &out) const
{
    d->indications.write(out, d->context.dialect);
}

void StackInitWriter::writeInit(CodeWriter &out) const
{
    if (d->context.view.settings.forJ1939Server)
        writeJ1939ObjectDictionaryInit(out, d->context);
    else if (d->context.isMultiLine())
        writeMultiLineInit(out, d->context);
    else
        writeSingleLineInit(out, d->context);
}

void StackInitWriter::writeOverwriteFunction(CodeWriter &out) const
{
    ::writeOverwriteFunction(out, d->context);
}
