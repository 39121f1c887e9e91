#ifndef VARIABLEMEMORY_H
#define VARIABLEMEMORY_H

#include "hmiplatform_export.h"

#include <QHash>

// Controller variable memory: PLC bit areas (bit types 0-6) hold single bits; the word classes
// (data classes 0-5) hold 32-bit words; bit types 7-12 are bits of the words of class (type - 7).
// Unwritten variables read 0. Channels here are already resolved (0-based).
class HMIPLATFORM_EXPORT VariableMemory
{
public:
    static constexpr int FirstWordBitType = 7;
    static constexpr int LastBitType = 12;
    static constexpr int LastDataClass = 5;

    bool bit(int comId, int channel, int bitType, int address, int bitIndex) const;
    // Returns true when the stored value changed.
    bool setBit(int comId, int channel, int bitType, int address, int bitIndex, bool value);
    qint32 word(int comId, int channel, int dataClass, int address) const;
    bool setWord(int comId, int channel, int dataClass, int address, qint32 value);
    void clear();

    struct Key
    {
        int comId;
        int channel;
        int area;
        int address;
        int bitIndex;
        bool operator==(const Key &o) const
        {
            return comId == o.comId && channel == o.channel && area == o.area && address == o.address
                   && bitIndex == o.bitIndex;
        }
    };

private:
    QHash<Key, bool> m_plcBits;
    QHash<Key, qint32> m_words;
};

HMIPLATFORM_EXPORT size_t qHash(const VariableMemory::Key &key, size_t seed = 0);

#endif
