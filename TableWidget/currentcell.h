#ifndef CURRENTCELL_H
#define CURRENTCELL_H

#include "hmiwidgets_export.h"

class QTableWidgetItem;

// The variable of the table's current cell, read from its binding text each time the current cell
// changes: what the keypad and the input line are opened with and where their value is written.
struct HMIWIDGETS_EXPORT CurrentCell
{
    static constexpr double DefaultLowest = -1000000000.0;
    static constexpr double DefaultHighest = 1000000000.0;

    bool bound = false;
    bool isValue = false;
    bool isBit = false;
    int channel = 0; // 0-based
    int dataClass = -1;
    int bitType = -1;
    int address = 0;
    int bitIndex = 0;
    int decimals = 0;
    double lowest = DefaultLowest;
    double highest = DefaultHighest;
    int sizeCode = 4;
    int radix = 10;
    int comId = 0;

    // The record of item in a table of the given mode (1: free entry, every cell counts as bound).
    static CurrentCell of(const QTableWidgetItem *item, int mode);
};

#endif
