#pragma once

#include <QString>

#include <concepts>
#include <type_traits>

/**
 * PDO mappability of a sub-index, in the numbers that the project file stores.
 *
 * A CiA 306 device description knows only mappable or not; CiA 311 (XDD) knows all five values.
 */
class PDOMapping
{
public:
    enum PDOMappingType : quint8 {
        Forbidden = 0, ///< may not be mapped
        Allowed = 1, ///< may be mapped into any PDO
        Default = 2, ///< mapped by default
        RPDO = 3, ///< receive PDOs only
        TPDO = 4, ///< transmit PDOs only
    };

    constexpr PDOMapping() = default;
    constexpr PDOMapping(PDOMappingType type) : m_type(type) { }
    /** From the EDS entry PDOMapping: false is Forbidden, true is Allowed. */
    template <std::same_as<bool> Flag>
    constexpr PDOMapping(Flag mappable) : m_type(mappable ? Allowed : Forbidden)
    {
    }
    /** From a stored number; numbers behind TPDO are kept so that nothing is lost on the way back. */
    template <typename Number>
    requires(std::is_integral_v<Number> && !std::is_same_v<Number, bool>) constexpr explicit PDOMapping(
        Number stored)
        : m_type(static_cast<PDOMappingType>(stored))
    {
    }

    constexpr void setValue(PDOMappingType type) { m_type = type; }
    constexpr bool isEqualToType(PDOMappingType type) const { return m_type == type; }
    constexpr bool operator==(const PDOMapping &other) const = default;

    /** The number of the pdomapping column. */
    constexpr quint8 toUInt() const { return m_type; }
    /** The EDS form: 0 for Forbidden, otherwise 1. */
    constexpr quint8 toBinary() const { return m_type == Forbidden ? 0 : 1; }

    QString getCSVStringValue() const;
    /** Inverse of getCSVStringValue; case does not matter, an unknown word is Forbidden. */
    static PDOMapping fromCSVString(const QString &text);
    /** The CiA 311 attribute PDOmapping: "no", "optional", "default", "RPDO" or "TPDO". */
    QString getXDDStringValue() const;

private:
    PDOMappingType m_type = Forbidden;
};
