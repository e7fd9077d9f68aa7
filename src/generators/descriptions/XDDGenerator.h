#pragma once

#include "generators/FileGenerator.h"
#include "generators/descriptions/DeviceDescription.h"

/** Writes the XML device description (ISO 15745, CiA 1311) of one CANopen FD line and variant. */
class XDDGenerator : public FileGenerator
{
    Q_OBJECT

public:
    explicit XDDGenerator(const QString &variantName = {}) : m_variantName(variantName) { }

protected:
    QString fileName() const override;
    QString jobName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    QString m_variantName;
    DeviceDescription m_device;
};
