#include "importers/ImporterFactory.h"

#include "importers/CODBImporter.h"
#include "importers/CsvImporter.h"
#include "importers/EDSImporter.h"
#include "importers/VEXPImporter.h"
#include "importers/XDDImporter.h"

namespace {

using ImporterFactory::Use;
using Importer = std::unique_ptr<BaseDataImporter>;

struct Format
{
    const char *suffix;
    bool batch; ///< may be imported without asking the user
    Importer (*make)(Use use);
};

template <typename Type>
Importer plain(Use)
{
    return std::make_unique<Type>();
}

// In a batch nobody can be asked whether the device's information shall come along: the file is the device.
template <bool Dcf>
Importer deviceDescription(Use use)
{
    auto importer = std::make_unique<EDSImporter>();
    importer->setDcfMode(Dcf);
    importer->setImportFileInfo(use == Use::Batch);
    return importer;
}

constexpr Format formats[] = {
    {"eds", true, deviceDescription<false>}, {"dcf", true, deviceDescription<true>},
    {"csv", true, plain<CsvImporter>},       {"icsv", true, plain<CsvImporter>},
    {"xdd", false, plain<XDDImporter>},      {"codb", false, plain<CODBImporter>},
    {"vexp", false, plain<VEXPImporter>},    {"vext", false, plain<VEXPImporter>},
    {"bak", false, plain<VEXPImporter>},
};

} // namespace

namespace ImporterFactory {

std::unique_ptr<BaseDataImporter> make(const QString &suffix, Use use)
{
    for (const Format &format : formats) {
        if (suffix.compare(QLatin1StringView(format.suffix), Qt::CaseInsensitive) == 0)
            return format.batch || use == Use::Selection ? format.make(use) : nullptr;
    }
    return nullptr;
}

} // namespace ImporterFactory
