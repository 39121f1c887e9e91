#include "variablememory.h"

#include <QtGlobal>

namespace {
bool isPlcBitArea(int bitType) { return bitType >= 0 && bitType < VariableMemory::FirstWordBitType; }
bool isWordBit(int bitType, int bitIndex)
{
    return bitType >= VariableMemory::FirstWordBitType && bitType <= VariableMemory::LastBitType
           && bitIndex >= 0 && bitIndex < 32;
}
bool isDataClass(int dataClass) { return dataClass >= 0 && dataClass <= VariableMemory::LastDataClass; }
} // namespace

size_t qHash(const VariableMemory::Key &key, size_t seed)
{
    const quint64 high = (quint64(quint32(key.comId)) << 40) ^ (quint64(quint32(key.channel)) << 20)
                         ^ (quint64(quint32(key.area)) << 8) ^ quint64(quint32(key.bitIndex));
    return size_t(::qHash(high, uint(seed)) ^ ::qHash(key.address, uint(seed)));
}

bool VariableMemory::bit(int comId, int channel, int bitType, int address, int bitIndex) const
{
    if (isPlcBitArea(bitType))
        return m_plcBits.value(Key{comId, channel, bitType, address, bitIndex}, false);
    if (isWordBit(bitType, bitIndex))
        return (quint32(word(comId, channel, bitType - FirstWordBitType, address)) >> bitIndex) & 1u;
    return false;
}

bool VariableMemory::setBit(int comId, int channel, int bitType, int address, int bitIndex, bool value)
{
    if (isPlcBitArea(bitType)) {
        const Key key{comId, channel, bitType, address, bitIndex};
        if (m_plcBits.value(key, false) == value)
            return false;
        m_plcBits.insert(key, value);
        return true;
    }
    if (!isWordBit(bitType, bitIndex))
        return false;
    const int dataClass = bitType - FirstWordBitType;
    quint32 w = quint32(word(comId, channel, dataClass, address));
    const quint32 mask = 1u << bitIndex;
    w = value ? (w | mask) : (w & ~mask);
    return setWord(comId, channel, dataClass, address, qint32(w));
}

qint32 VariableMemory::word(int comId, int channel, int dataClass, int address) const
{
    if (!isDataClass(dataClass))
        return 0;
    return m_words.value(Key{comId, channel, dataClass, address, 0}, 0);
}

bool VariableMemory::setWord(int comId, int channel, int dataClass, int address, qint32 value)
{
    if (!isDataClass(dataClass))
        return false;
    const Key key{comId, channel, dataClass, address, 0};
    if (m_words.value(key, 0) == value)
        return false;
    m_words.insert(key, value);
    return true;
}

void VariableMemory::clear()
{
    m_plcBits.clear();
    m_words.clear();
}
