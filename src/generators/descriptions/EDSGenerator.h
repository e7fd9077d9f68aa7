#pragma once

#include "generators/FileGenerator.h"
#include "generators/descriptions/DeviceDescription.h"

/**
 * Writes the Electronic Data Sheet (CiA 306) of one line and variant.
 *
 * A name other than the empty one stands for the objects that name it in their metadata ("eds_define").
 * A CAN FD device has a second file for classical CAN; the two say the same of the object dictionary.
 */
class EDSGenerator : public FileGenerator
{
    Q_OBJECT

public:
    EDSGenerator(const QString &variantName, bool fdVariant, bool classical);

    /** Whether the file is the one that tells of CAN FD. */
    bool isFdVariant() const { return m_fdVariant; }

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    QString m_variantName;
    bool m_fdVariant;
    bool m_classical;
    DeviceDescription m_device;
};
