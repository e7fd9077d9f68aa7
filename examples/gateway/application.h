#ifndef APPLICATION_H
#define APPLICATION_H 1

/* The process data that both lines of the gateway share; the application moves them. */
extern UNSIGNED8 sensorsPresent;
extern INTEGER16 sensorValues[4];
extern INTEGER16 setPoints[2];

#endif /* APPLICATION_H */
