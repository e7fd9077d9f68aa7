#include "generators/canopen/StackServices.h"

#include <algorithm>
#include <array>

namespace {

/** Which sub-indices of an object a row of the tables below is about. */
enum class Subs : quint8 {
    All,
    One, ///< sub-index 1
    NotZero,
};

struct Range
{
    quint16 first;
    quint16 last;
    Subs subs = Subs::All;

    constexpr bool holds(quint16 index, quint8 subIndex) const
    {
        return first <= index && index <= last && holdsSub(subIndex);
    }

private:
    constexpr bool holdsSub(quint8 subIndex) const
    {
        switch (subs) {
        case Subs::All:
            return true;
        case Subs::One:
            return subIndex == 1;
        case Subs::NotZero:
            return subIndex != 0;
        }
        return false;
    }
};

constexpr std::array<Range, 13> heldValues{{
    {0x1005, 0x1006},
    {0x1016, 0x1016},
    {0x1019, 0x1019},
    {0x1029, 0x1029, Subs::One},
    {0x100C, 0x100D},
    {0x1012, 0x1012},
    {0x1017, 0x1017},
    {0x1010, 0x1011, Subs::NotZero},
    {0x102A, 0x102A},
    {0x1200, 0x12FF, Subs::NotZero},
    {0x1300, 0x13FF},
    {0x1400, 0x1BFF, Subs::NotZero},
    {0x1F10, 0x1F11},
}};

struct Specifier
{
    Range range;
    QStringView suffix;
};

constexpr std::array<Specifier, 26> specifiers{{
    {{0x1005, 0x1006}, u"_SYNC"},
    {{0x1019, 0x1019}, u"_SYNC"},
    {{0x1003, 0x1003}, u"_EMCY"},
    {{0x1014, 0x1015}, u"_EMCY"},
    {{0x1028, 0x1028, Subs::NotZero}, u"_EMCY"},
    {{0x1032, 0x1032}, u"_EMCY"},
    {{0x1016, 0x1016, Subs::NotZero}, u"_ERRCTRL"},
    {{0x100C, 0x100D}, u"_ERRCTRL"},
    {{0x1017, 0x1017}, u"_ERRCTRL"},
    {{0x1029, 0x1029, Subs::One}, u"_ERRCTRL"},
    {{0x1010, 0x1011, Subs::NotZero}, u"_STORE"},
    {{0x1012, 0x1012}, u"_TIME"},
    {{0x102A, 0x102A}, u"_NMT"},
    {{0x1200, 0x127F, Subs::NotZero}, u"_SDO_SERVER"},
    {{0x1280, 0x12FF, Subs::NotZero}, u"_SDO_CLIENT"},
    {{0x1300, 0x1300}, u"_GFC"},
    {{0x1301, 0x13F0, Subs::NotZero}, u"_SRDO"},
    {{0x13FE, 0x13FF}, u"_SRDO"},
    {{0x1400, 0x15FF, Subs::NotZero}, u"_RPDO"},
    {{0x1600, 0x17FF}, u"_RMAP"},
    {{0x1800, 0x19FF, Subs::NotZero}, u"_TPDO"},
    {{0x1A00, 0x1BFF}, u"_TMAP"},
    {{0x1F10, 0x1F11}, u"_SRD"},
    {{0x1F2C, 0x1F2C, Subs::NotZero}, u"_NETWORK"},
    {{0x1F80, 0x1F82}, u"_NMT"},
    {{0x1F90, 0x1F90}, u"_FLYMA"},
}};

/** The reference is the index less the base. */
struct Reference
{
    Range range;
    quint16 base = 0;
};

constexpr std::array<Reference, 22> references{{
    {{0x1003, 0x1003}},
    {{0x1005, 0x1006}},
    {{0x100C, 0x100D}},
    {{0x1010, 0x1011, Subs::NotZero}},
    {{0x1014, 0x1015}},
    {{0x1016, 0x1016, Subs::NotZero}},
    {{0x1017, 0x1017}},
    {{0x1019, 0x1019}},
    {{0x1028, 0x1028, Subs::NotZero}},
    {{0x1029, 0x1029, Subs::One}},
    {{0x102A, 0x102A}},
    {{0x1032, 0x1032}},
    {{0x1200, 0x127F, Subs::NotZero}, 0x11FF},
    {{0x1280, 0x12FF, Subs::NotZero}, 0x127F},
    {{0x1301, 0x13FF}},
    {{0x1400, 0x15FF, Subs::NotZero}, 0x13FF},
    {{0x1600, 0x17FF}, 0x15FF},
    {{0x1800, 0x19FF, Subs::NotZero}, 0x17FF},
    {{0x1A00, 0x1BFF}, 0x19FF},
    {{0x1F2C, 0x1F2C, Subs::NotZero}},
    {{0x1F80, 0x1F82}},
    {{0x1F90, 0x1F90, Subs::NotZero}},
}};

/** The first row about the sub-index; null where there is none. */
template <typename Table, typename Projection>
auto *findRow(const Table &table, Projection range, quint16 index, quint8 subIndex)
{
    const auto found = std::ranges::find_if(
        table, [=](const Range &row) { return row.holds(index, subIndex); }, range);
    return found == table.end() ? nullptr : &*found;
}

} // namespace

bool StackServices::holdsValue(quint16 index, quint8 subIndex)
{
    return findRow(heldValues, std::identity(), index, subIndex);
}

QStringView StackServices::specifier(quint16 index, quint8 subIndex)
{
    const Specifier *row = findRow(specifiers, &Specifier::range, index, subIndex);
    return row ? row->suffix : QStringView();
}

std::optional<quint16> StackServices::reference(quint16 index, quint8 subIndex)
{
    const Reference *row = findRow(references, &Reference::range, index, subIndex);
    return row ? std::optional(quint16(index - row->base)) : std::nullopt;
}
