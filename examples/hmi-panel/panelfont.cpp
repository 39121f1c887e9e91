#include "panelfont.h"

#include "norvointerface_z3.h"

#include <QApplication>

void PanelFont::prepareApplication()
{
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
}

QFont PanelFont::standard()
{
    return QFont(QStringLiteral("Sans Serif"), 9);
}

void PanelFont::apply()
{
    QApplication::setFont(standard());
    NORVOInterface_Z3::initialization()->setDefaultWidgetFont(standard());
}
