#include "tablecontents.h"

#include "hexinflater.h"
#include "storedstream.h"

#include <QBrush>
#include <QBuffer>
#include <QColor>
#include <QDataStream>
#include <QFont>
#include <QSize>
#include <QStringList>
#include <QTableWidgetItem>
#include <QtEndian>

#include <algorithm>

namespace {

// The Qt 4 stream ids of the values a table item can hold.
enum StreamType : quint32 {
    Bool = 1, Int = 2, UInt = 3, Double = 6, String = 10, StringList = 11, ByteArray = 12, Size = 21,
    Font = 64, Brush = 66, Color = 67
};
constexpr quint32 NullLength = 0xffffffffu;
constexpr int FlagsRole = TableContents::FlagsRole;
constexpr int MinItemSize = 4;       // an item without roles: its role count
constexpr int MinRoleSize = 4 + 4 + 1; // role, value type, null flag
constexpr int MaxListEntries = 1000;
constexpr quint8 LastPatternBrush = Qt::DiagCrossPattern; // gradients and textures are not item values

class Reader
{
public:
    explicit Reader(QDataStream &in) : m_in(in) {}

    qint64 left() const { return m_in.device()->bytesAvailable(); }
    bool ok() const { return m_in.status() == QDataStream::Ok; }

    bool item(TableContents::Roles *roles)
    {
        quint32 count = 0;
        m_in >> count;
        if (!ok() || qint64(count) * MinRoleSize > left())
            return false;
        for (quint32 i = 0; i < count; ++i) {
            qint32 role = 0;
            QVariant value;
            m_in >> role;
            if (!ok() || !variant(&value))
                return false;
            if (roles)
                roles->append({role, value});
        }
        return true;
    }

private:
    bool variant(QVariant *value)
    {
        quint32 type = 0;
        qint8 isNull = 0;
        m_in >> type >> isNull;
        if (!ok())
            return false;
        switch (type) {
        case Bool: { qint8 v = 0; m_in >> v; *value = bool(v); break; }
        case Int: { qint32 v = 0; m_in >> v; *value = int(v); break; }
        case UInt: { quint32 v = 0; m_in >> v; *value = uint(v); break; }
        case Double: { double v = 0; m_in >> v; *value = v; break; }
        case String: { QString s; if (!string(&s)) return false; *value = s; break; }
        case StringList: {
            QStringList list;
            if (!StoredStream::readStringList(m_in, list, MaxListEntries))
                return false;
            *value = list;
            break;
        }
        case ByteArray: { QByteArray b; if (!bytes(&b)) return false; *value = b; break; }
        case Size: { qint32 w = 0, h = 0; m_in >> w >> h; *value = QSize(w, h); break; }
        case Font: {
            if (!lengthFits(0)) // the family comes first
                return false;
            QFont f;
            m_in >> f;
            *value = f;
            break;
        }
        case Brush: {
            const QByteArray style = m_in.device()->peek(1);
            if (style.size() != 1 || quint8(style.at(0)) > LastPatternBrush)
                return false;
            QBrush b;
            m_in >> b;
            *value = b;
            break;
        }
        case Color: { QColor c; m_in >> c; *value = c; break; }
        default:
            return false;
        }
        return ok();
    }

    // The length prefix at offset ahead, if the bytes it announces are there.
    bool lengthFits(int ahead)
    {
        const QByteArray peeked = m_in.device()->peek(ahead + 4);
        if (peeked.size() < ahead + 4)
            return false;
        const quint32 length = qFromBigEndian<quint32>(peeked.constData() + ahead);
        return length == NullLength || qint64(length) <= left() - ahead - 4;
    }

    bool string(QString *s)
    {
        quint32 length = 0;
        m_in >> length;
        if (!ok())
            return false;
        if (length == NullLength)
            return true;
        if (length % 2 != 0 || qint64(length) > left())
            return false;
        QByteArray raw(int(length), Qt::Uninitialized);
        if (m_in.readRawData(raw.data(), raw.size()) != raw.size())
            return false;
        s->resize(raw.size() / 2);
        for (int i = 0; i < s->size(); ++i)
            (*s)[i] = QChar(qFromBigEndian<quint16>(raw.constData() + 2 * i));
        return true;
    }

    bool bytes(QByteArray *b)
    {
        quint32 length = 0;
        m_in >> length;
        if (!ok())
            return false;
        if (length == NullLength)
            return true;
        if (qint64(length) > left())
            return false;
        b->resize(int(length));
        return m_in.readRawData(b->data(), b->size()) == b->size();
    }

    QDataStream &m_in;
};

} // namespace

class TableContents::Private
{
public:
    HexInflater inflater;
    int rows = 0;
    int columns = 0;
    QList<qint64> rowStarts; // rowStarts[r]: where row r begins, for every row read up to
    bool broken = false;     // a malformed item ends the readable rows

    // Reads the row starting at start, keeping the roles of its first keep cells; inflates more of
    // the contents while the row runs past what is there. Sets end to where the next row begins.
    bool parseRow(qint64 start, int keep, QList<Roles> *cells, qint64 *end)
    {
        inflater.seek(start);
        for (;;) {
            QBuffer buffer(const_cast<QByteArray *>(&inflater.data()));
            buffer.open(QIODevice::ReadOnly);
            bool ok = buffer.seek(start - inflater.base());
            QDataStream in(&buffer);
            StoredStream::prepare(in);
            Reader reader(in);
            if (cells)
                cells->clear();
            for (int c = 0; c < columns && ok; ++c) {
                Roles roles;
                ok = reader.item(c < keep ? &roles : nullptr);
                if (ok && c < keep && cells)
                    cells->append(roles);
            }
            if (ok) {
                *end = inflater.base() + buffer.pos();
                return true;
            }
            // What looked malformed may only be cut short: read on, then try the row again.
            if (!inflater.grow(std::max<qint64>(inflater.stepSize(), inflater.data().size() / 4))) {
                broken = true;
                if (cells)
                    cells->clear();
                return false;
            }
        }
    }

    // Where the row starting at start ends, found without making its values: for rows of plain
    // values already inflated whole. -1 when the row must be read the careful way (another value
    // type, a value past what is inflated, or malformed), which then decides.
    qint64 skipRow(qint64 start) const
    {
        const char *bytes = inflater.data().constData();
        const qint64 size = inflater.data().size();
        qint64 at = start - inflater.base(); // in the bytes held
        if (at < 0)
            return -1;
        auto next = [&](quint32 *v) {
            if (size - at < 4)
                return false;
            *v = qFromBigEndian<quint32>(bytes + at);
            at += 4;
            return true;
        };
        for (int c = 0; c < columns; ++c) {
            quint32 count = 0;
            if (!next(&count) || qint64(count) * MinRoleSize > size - at)
                return -1;
            for (quint32 i = 0; i < count; ++i) {
                quint32 role = 0, type = 0, length = 0;
                if (!next(&role) || !next(&type) || size - at < 1)
                    return -1;
                ++at; // the null flag
                switch (type) {
                case Bool: length = 1; break;
                case Int: case UInt: length = 4; break;
                case Double: case Size: length = 8; break;
                case String: case ByteArray:
                    if (!next(&length))
                        return -1;
                    if (length == NullLength)
                        length = 0;
                    else if (type == String && length % 2 != 0)
                        return -1;
                    break;
                default:
                    return -1;
                }
                if (size - at < qint64(length))
                    return -1;
                at += length;
            }
        }
        return inflater.base() + at;
    }

    // Reads the starts of the rows up to row; false when row cannot be reached.
    bool reach(int row)
    {
        while (rowStarts.size() <= row) {
            if (broken || rowStarts.size() >= rows)
                return false;
            qint64 end = skipRow(rowStarts.last());
            if (end < 0 && !parseRow(rowStarts.last(), 0, nullptr, &end))
                return false;
            rowStarts.append(end);
        }
        return true;
    }
};

TableContents::TableContents()
    : d(new Private)
{
}

TableContents::~TableContents() = default;
TableContents::TableContents(TableContents &&) noexcept = default;
TableContents &TableContents::operator=(TableContents &&) noexcept = default;

bool TableContents::load(const QByteArray &hexText, qint64 checkpointSpacing)
{
    d.reset(new Private);
    auto fresh = std::make_unique<Private>();
    constexpr int HeaderSize = 8;
    if (!fresh->inflater.open(hexText, ExpansionLimit, checkpointSpacing) || !fresh->inflater.ensure(HeaderSize))
        return false;
    QDataStream in(fresh->inflater.data());
    StoredStream::prepare(in);
    qint32 rows = 0, columns = 0;
    in >> rows >> columns;
    // Every item takes at least its role count: a claim beyond the claimed size is refused at once.
    if (in.status() != QDataStream::Ok || rows < 0 || rows > MaxRows || columns < 0 || columns > MaxColumns
        || qint64(rows) * columns * MinItemSize > fresh->inflater.claimedSize() - HeaderSize)
        return false;
    fresh->rows = rows;
    fresh->columns = columns;
    fresh->rowStarts.append(HeaderSize);
    d = std::move(fresh);
    return true;
}

bool TableContents::isEmpty() const { return d->rows == 0 || d->columns == 0; }
int TableContents::rowCount() const { return d->rows; }
int TableContents::columnCount() const { return d->columns; }
int TableContents::knownRows() const { return int(d->rowStarts.size()) - 1; }
bool TableContents::indexAhead(qint64 bytes)
{
    if (d->columns == 0)
        return false;
    const qint64 until = d->rowStarts.last() + bytes;
    while (d->rowStarts.size() < d->rows && d->rowStarts.last() < until && d->reach(int(d->rowStarts.size()))) {
    }
    return d->rowStarts.size() < d->rows && !d->broken;
}

qint64 TableContents::heldBytes() const { return d->inflater.data().size(); }

bool TableContents::readRow(int row, int columns, QList<Roles> *cells)
{
    cells->clear();
    if (row < 0 || row >= d->rows)
        return false;
    if (d->columns == 0)
        return true; // rows without cells: nothing to read, and every row starts at the same place
    if (!d->reach(row))
        return false;
    qint64 end = 0;
    if (!d->parseRow(d->rowStarts.at(row), std::clamp(columns, 0, d->columns), cells, &end))
        return false;
    if (row + 1 == d->rowStarts.size() && row + 1 < d->rows)
        d->rowStarts.append(end);
    return true;
}

std::unique_ptr<QTableWidgetItem> TableContents::makeItem(const Roles &roles)
{
    auto item = std::make_unique<QTableWidgetItem>();
    for (const auto &[role, value] : roles) {
        if (role == FlagsRole)
            item->setFlags(Qt::ItemFlags(value.toInt()));
        else
            item->setData(role, value);
    }
    return item;
}

namespace {

// The roles an item stores: Designer's own property roles and shadow values stay in Designer.
constexpr int StoredRoles[] = {Qt::DisplayRole, Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole,
                               Qt::FontRole, Qt::TextAlignmentRole, Qt::BackgroundRole, Qt::ForegroundRole,
                               Qt::CheckStateRole, Qt::SizeHintRole};

bool storable(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool: case QMetaType::Int: case QMetaType::UInt: case QMetaType::Double:
    case QMetaType::QString: case QMetaType::QStringList: case QMetaType::QByteArray: case QMetaType::QSize:
    case QMetaType::QFont: case QMetaType::QColor:
        return true;
    case QMetaType::QBrush:
        return value.value<QBrush>().style() <= Qt::DiagCrossPattern;
    default:
        return false;
    }
}

void writeItem(QDataStream &out, const QTableWidgetItem *item)
{
    static const Qt::ItemFlags defaultFlags = QTableWidgetItem().flags();
    QList<std::pair<int, QVariant>> roles;
    if (item) {
        if (item->flags() != defaultFlags)
            roles.append({FlagsRole, int(item->flags())});
        for (int role : StoredRoles) {
            const QVariant value = item->data(role);
            if (value.isValid() && storable(value))
                roles.append({role, value});
        }
    }
    out << qint32(roles.size());
    for (const auto &[role, value] : roles)
        out << qint32(role) << value;
}

} // namespace

QByteArray TableContents::encode(int rowCount, int columnCount, const QList<QList<const QTableWidgetItem *>> &rows)
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    out << qint32(rowCount) << qint32(columnCount);
    for (int r = 0; r < rowCount; ++r) {
        for (int c = 0; c < columnCount; ++c)
            writeItem(out, r < rows.size() && c < rows.at(r).size() ? rows.at(r).at(c) : nullptr);
    }
    return HexFrame::encode(data);
}
