#include "app/GeneratedFiles.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

struct ViewedFile
{
    const char *actionName;
    const char *fileNames; ///< separated by blanks; %1 is the project's name, %2 the line
};

constexpr ViewedFile viewedFiles[]{
    {"actionCo_objects_c", "gen_objdict.c"},
    {"actionCos_conf_h", "gen_define.h"},
    {"actionGen_indication_h", "gen_indication.h"},
    {"actiongen_indices_h", "gen_indices.h"},
    {"actionGen_extern_decl_h", "gen_extern_decl.h"},
    {"actionGen_vobjdict_c", "gen_vobjdict.c"},
    {"actionGen_srdo_c", "gen_srdo.c"},
    {"actionGen_pgn_c", "gen_pgn.c"},
    {"actiongen_sdm_c", "gen_sdg.c"},
    {"actionGen_mp_c", "gen_mp.c"},
    {"actiongen_rawcan_c", "gen_rawcan.c"},
    {"actiongen_rawcan_doc_txt", "%1_%2_doc.txt %1_doc.txt"},
    {"action_EDS_File", "%1_%2.eds %1.eds"},
    {"action_XDD_File_2", "%1_%2.xdd"},
    {"action_CSV_File", "%1_%2.csv %1.csv"},
    {"action_HTML_Documenation",
     "%1_%2.html %1_%2_co.html %1_%2_j1939.html %1.html %1_co.html %1_j1939.html"},
    {"action_Text_Documentation", "%1_%2.txt %1_doc.txt"},
    {"action_dbc_file", "%1_%2.dbc %1.dbc"},
};

} // namespace

QStringList GeneratedFiles::actionNames()
{
    QStringList names;
    for (const ViewedFile &file : viewedFiles)
        names.append(QString::fromLatin1(file.actionName));
    return names;
}

QStringList GeneratedFiles::fileNames(const QString &actionName, const Place &place)
{
    const auto *file = std::ranges::find(viewedFiles, actionName, [](const ViewedFile &viewed) {
        return QString::fromLatin1(viewed.actionName);
    });
    if (file == std::end(viewedFiles))
        return {};
    QStringList names = QString::fromLatin1(file->fileNames).split(u' ');
    for (QString &name : names)
        if (name.contains("%2"_L1))
            name = name.arg(place.projectName, QString::number(place.line));
        else if (name.contains("%1"_L1))
            name = name.arg(place.projectName);
    return names;
}

QString GeneratedFiles::existingFile(const QString &actionName, const Place &place)
{
    if (place.outputDir.isEmpty())
        return QString();
    const QDir folder(place.outputDir);
    const QStringList names = fileNames(actionName, place);
    for (const QString &name : names)
        if (QFileInfo(folder.filePath(name)).isFile())
            return folder.filePath(name);
    return QString();
}
