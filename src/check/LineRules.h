#pragma once

// The rules of one line. Each is called once per line and tells its findings through the check it gets;
// ModelChecker holds them in the order of the console.

class LineCheck;

// Values and objects (ValueRules.cpp, MandatoryObjectRules.cpp, ObjectRules.cpp, VariableNameRules.cpp)
void checkValueConversions(LineCheck &check);
void checkMandatoryObjects(LineCheck &check);
void checkGaps(LineCheck &check);
void checkSyncUsdoAndStore(LineCheck &check);
void checkObjects(LineCheck &check);
void checkVariableNames(LineCheck &check);

// Settings (StackVersionRule.cpp, LineSettingRules.cpp)
void checkStackVersion(LineCheck &check);
void checkLineSettings(LineCheck &check);

// Identity and error objects (IdentityRules.cpp)
void checkIdentity(LineCheck &check);

// Communication (PdoMappingRules.cpp, PdoCommunicationRules.cpp, SrdoRules.cpp)
void checkPdoMapping(LineCheck &check); ///< notes bitwise and dynamic mapping for the rule below
void checkPdoCommunication(LineCheck &check);
void checkEventTimers(LineCheck &check);
void checkSrdo(LineCheck &check);
void checkMappingGranularity(LineCheck &check); ///< bitwise and dynamic mapping, told behind the walks
void checkPdoCallbacks(LineCheck &check);
void checkEmcyRouting(LineCheck &check); ///< once per run, see LineCheck::emcyRoutingReported
void checkPredefinedConnectionSet(LineCheck &check);
