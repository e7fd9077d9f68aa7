#include "generators/EdsVariants.h"

#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstCommunicationObject = 0x1000; // below are the data types (CiA 301)

} // namespace

QStringList edsVariants(ObjectDataBase &store, quint8 line)
{
    QStringList variants{QString()};
    const auto take = [&variants](const MetadataMap &metadata) {
        const QString name = metadata.value(u"eds_define"_s);
        if (!variants.contains(name))
            variants.append(name);
    };
    const QMap<ObjectDataBase::SubAddress, MetadataMap> subMetadata = store.getAllSubMetadata(line);
    const QList<quint16> indices = store.getIndexList(line, firstCommunicationObject);
    for (const quint16 index : indices) {
        take(store.getObjectMetadata(line, index));
        const auto behind = subMetadata.upperBound({index, 0xFF});
        for (auto sub = subMetadata.lowerBound({index, 0}); sub != behind; ++sub)
            take(*sub);
    }
    return variants;
}
