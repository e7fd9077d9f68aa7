#pragma once

#include "generators/canopen/SrdoView.h"

class CodeWriter;
class Dialect;

/**
 * Writes the blocks of gen_srdo.c that move values: out of the normal and the inverted message of an SRDO
 * into the mapped variables, and back (EN 50325-5).
 *
 * Received values wait in a temporary until the inverted message has confirmed them. A value that cannot be
 * moved makes the functions return an error, so that its SRDO is never taken for a valid one.
 */
class SrdoMappingWriter
{
public:
    SrdoMappingWriter(const SrdoView &view, const Dialect &dialect) : m_view(view), m_dialect(dialect) { }

    /** The normal message into the temporaries. */
    void writeReceiveNormal(CodeWriter &out) const;
    /** The inverted message against the temporaries, and these into the variables. */
    void writeReceiveInverted(CodeWriter &out) const;
    void writeTransmit(CodeWriter &out) const;

private:
    using ValueWriter = void (SrdoMappingWriter::*)(CodeWriter &, const Srdo &) const;

    void writeSwitch(CodeWriter &out, ValueWriter write) const;
    void writeSrdoSwitch(CodeWriter &out, const QList<Srdo> &srdos, ValueWriter write) const;
    void writeDefault(CodeWriter &out) const;
    void writeNotSupported(CodeWriter &out, const SrdoValue &value) const;

    void readNormal(CodeWriter &out, const Srdo &srdo) const;
    void checkInverted(CodeWriter &out, const Srdo &srdo) const;
    void compare(CodeWriter &out, const SrdoValue &value) const;
    void writeComparison(CodeWriter &out, const QString &temporary, const QString &inverted) const;
    void takeValues(CodeWriter &out, const Srdo &srdo) const;
    void transmit(CodeWriter &out, const Srdo &srdo) const;

    const SrdoVariable &variable(int place) const { return m_view.variables.at(place); }

    const SrdoView &m_view;
    const Dialect &m_dialect;
};
