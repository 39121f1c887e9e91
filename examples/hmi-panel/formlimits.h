#ifndef FORMLIMITS_H
#define FORMLIMITS_H

#include <QString>
#include <QStringView>

class QIODevice;
class QWidget;

// What the panel takes from a form file beyond its properties: how deep its elements nest and how
// large and far out its widgets are. Qt's form loader reads and builds nested elements recursively,
// so a deeper form overflows the stack; a larger form costs the screen memory and time in proportion
// to its area. The loader refuses the first and clamps the second, and the checker reports both at
// their lines, through the rules here.
class FormLimits
{
public:
    // <widget> and <layout> elements inside each other; Designer's deepest real forms nest a dozen.
    static constexpr int MaxNesting = 64;
    // Elements of any kind inside each other (layout items, properties, action groups).
    static constexpr int MaxElementDepth = 256;
    // Width and height of a widget, and how far from its parent's origin it may sit.
    static constexpr int MaxExtent = 4096;
    // The form file; sample forms with 2,000 table rows take 60 KB.
    static constexpr qint64 MaxFileBytes = 64 * 1024 * 1024;

    // Why the file is not to be opened as a form (a pipe or device would block, a folder cannot be
    // read, a larger file is no form), or empty.
    static QString fileProblem(const QString &fileName);

    // Counts the open elements of a form read from its start.
    class Nesting
    {
    public:
        // False, counting nothing, for an element that would nest too deep.
        bool enter(QStringView element);
        void leave(QStringView element);

    private:
        int m_elements = 0;
        int m_levels = 0;
    };
    static QString nestingProblem();
    // The line of the first element nested too deep, or 0. Reads the device up to there.
    static qint64 firstTooDeep(QIODevice *device);

    struct Geometry
    {
        qint64 x = 0;
        qint64 y = 0;
        qint64 width = 0;
        qint64 height = 0;
        bool operator==(const Geometry &o) const { return x == o.x && y == o.y && width == o.width && height == o.height; }
        bool operator!=(const Geometry &o) const { return !(*this == o); }
        // "16000 x 16000 at (0, 0)"
        QString toString() const;
    };
    // Positions within MaxExtent of the origin, sizes from 0 to MaxExtent.
    static Geometry clamped(const Geometry &geometry);
    // Clamps the geometry of the form and of every widget in it, each with a warning naming it.
    static void clampGeometry(QWidget *form);
};

#endif
