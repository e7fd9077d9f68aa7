// The viewer's slots. Each is connected by its name to the action of that name.
#include "app/VexMainWindow.h"

using namespace Qt::StringLiterals;

void VexMainWindow::on_actionCo_objects_c_triggered()
{
    viewFile(u"actionCo_objects_c"_s);
}

void VexMainWindow::on_actionCos_conf_h_triggered()
{
    viewFile(u"actionCos_conf_h"_s);
}

void VexMainWindow::on_actionGen_indication_h_triggered()
{
    viewFile(u"actionGen_indication_h"_s);
}

void VexMainWindow::on_actionGen_pgn_c_triggered()
{
    viewFile(u"actionGen_pgn_c"_s);
}

void VexMainWindow::on_actionGen_extern_decl_h_triggered()
{
    viewFile(u"actionGen_extern_decl_h"_s);
}

void VexMainWindow::on_actionGen_srdo_c_triggered()
{
    viewFile(u"actionGen_srdo_c"_s);
}

void VexMainWindow::on_actionGen_mp_c_triggered()
{
    viewFile(u"actionGen_mp_c"_s);
}

void VexMainWindow::on_actionGen_vobjdict_c_triggered()
{
    viewFile(u"actionGen_vobjdict_c"_s);
}

void VexMainWindow::on_actiongen_indices_h_triggered()
{
    viewFile(u"actiongen_indices_h"_s);
}

void VexMainWindow::on_actiongen_sdm_c_triggered()
{
    viewFile(u"actiongen_sdm_c"_s);
}

void VexMainWindow::on_actiongen_rawcan_c_triggered()
{
    viewFile(u"actiongen_rawcan_c"_s);
}

void VexMainWindow::on_actiongen_rawcan_doc_txt_triggered()
{
    viewFile(u"actiongen_rawcan_doc_txt"_s);
}

void VexMainWindow::on_action_EDS_File_triggered()
{
    viewFile(u"action_EDS_File"_s);
}

void VexMainWindow::on_action_CSV_File_triggered()
{
    viewFile(u"action_CSV_File"_s);
}

void VexMainWindow::on_action_HTML_Documenation_triggered()
{
    viewFile(u"action_HTML_Documenation"_s);
}

void VexMainWindow::on_action_Text_Documentation_triggered()
{
    viewFile(u"action_Text_Documentation"_s);
}

void VexMainWindow::on_action_dbc_file_triggered()
{
    viewFile(u"action_dbc_file"_s);
}

void VexMainWindow::on_action_XDD_File_2_triggered()
{
    viewFile(u"action_XDD_File_2"_s);
}
