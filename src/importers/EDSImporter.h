#pragma once

#include "importers/DeviceDescriptionImporter.h"

class EdsParser;

/**
 * Reads the objects of a device description ("eds") or of a configured device ("dcf") of CiA 306.
 *
 * PDOs that the file declares by their number only are completed, as objects that are switched off.
 */
class EDSImporter : public DeviceDescriptionImporter
{
    Q_OBJECT

public:
    EDSImporter() = default;
    ~EDSImporter() override;

    /** Whether the values of a configured device replace the defaults; not so at first. */
    void setDcfMode(bool dcf) { m_dcfMode = dcf; }
    bool dcfMode() const { return m_dcfMode; }
    /** Whether the device information goes to the description settings of the line; not so at first. */
    void setImportFileInfo(bool import) { m_importFileInfo = import; }
    bool importFileInfo() const { return m_importFileInfo; }

protected:
    void read() override;

private:
    struct Object
    {
        CANopen::CANopenIndex record;
        QList<CANopenSubindex> subs;
    };

    void takeObject(const CANopen::CANopenIndex &record);
    void takeSubIndex(const CANopenSubindex &sub);
    void writeCurrentObject();
    ObjectDataBase::SUBINDEX_DATA_T row(const CANopenSubindex &sub);
    void noteWhatIsLost(const CANopenSubindex &sub);
    void completePdos(const EdsParser &parser);

    bool m_dcfMode = false;
    bool m_importFileInfo = false;

    // The state of one read.
    Object m_object;
    bool m_hasObject = false;
    QSet<quint16> m_described; ///< indices in the file, whatever the range
};
