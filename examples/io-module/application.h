#ifndef APPLICATION_H
#define APPLICATION_H 1

/* The process data, as application.csv gives them to the object dictionary. */
extern UNSIGNED8 digitalInputs[2];
extern UNSIGNED8 digitalOutputs[2];
extern INTEGER16 analogueInputs[4];
extern INTEGER16 analogueOutputs[2];
extern INTEGER16 moduleTemperature;
extern char installationPlace[32];

#endif /* APPLICATION_H */
