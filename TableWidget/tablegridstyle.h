#ifndef TABLEGRIDSTYLE_H
#define TABLEGRIDSTYLE_H

#include <QProxyStyle>

// The application's style with the grid lines of each parameter table in that table's grid colour.
// One instance serves every table: a style sheet per table would polish its headers, scroll bars and
// viewport again and route all of their painting through the style sheet engine.
class TableGridStyle : public QProxyStyle
{
    Q_OBJECT
public:
    static QStyle *shared();

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override;

private:
    using QProxyStyle::QProxyStyle;
};

#endif
