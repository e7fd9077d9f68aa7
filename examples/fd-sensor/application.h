#ifndef APPLICATION_H
#define APPLICATION_H 1

/* The measured values, written by the application: pressure in bar, temperature in 0.1 degrees Celsius. */
extern UNSIGNED8 channelState;
extern REAL32 pressure[8];
extern INTEGER16 temperature[8];

#endif /* APPLICATION_H */
