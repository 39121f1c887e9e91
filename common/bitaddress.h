#ifndef BITADDRESS_H
#define BITADDRESS_H

// One controller bit of a widget, on the widget's link and channel. Type -1 means not configured.
struct BitAddress
{
    int type = -1;
    int address = 0;
    int bitIndex = 0;
};

#endif
