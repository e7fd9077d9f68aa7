#pragma once

/**
 * Forms of the initialisation structures that generated code hands to the stack.
 *
 * gen_define.h tells them to the stack, and a structure that bears its version as first member bears the
 * one from here. A change of the members of a structure needs a new number, and a stack that knows it.
 */
namespace InitStructVersions {

inline constexpr int none = 0; ///< a structure of the older form, which bears no version
inline constexpr int common = 1; ///< CORE_COMMON_INIT_VAL_T
inline constexpr int uds = 1; ///< UDS_SERVICE_INIT_VAL_T
inline constexpr int canopen = 1; ///< CO_SERVICE_INIT_VAL_T
inline constexpr int j1939 = 1; ///< J1939_SERVICE_INIT_VAL_T
inline constexpr int rawCan = 1; ///< RAWCAN_SERVICE_INIT_VAL_T

} // namespace InitStructVersions
