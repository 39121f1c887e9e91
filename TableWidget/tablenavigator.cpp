#include "tablenavigator.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTableWidget>

#include <algorithm>

TableNavigator::TableNavigator(QTableWidget *table, ItemAt itemAt)
    : m_table(table)
    , m_itemAt(std::move(itemAt))
{
}

bool TableNavigator::stopsAt(int row, int column) const
{
    const QTableWidgetItem *item = m_itemAt(row, column);
    return !item || (item->flags() & Qt::ItemIsSelectable);
}

void TableNavigator::moveVertically(int step)
{
    const int current = m_table->currentRow();
    const int column = m_table->currentColumn();
    int row = current + step;
    while (row >= 0 && row < m_table->rowCount() && !stopsAt(row, column))
        row += step;
    if (row < 0)
        m_table->scrollToTop();
    else if (row >= m_table->rowCount())
        m_table->scrollToBottom();
    if (row < 0 || row >= m_table->rowCount() || row == current)
        return;
    // The view's own key handling moves the cell, so selection and scrolling behave as for a key.
    m_sentKey = true;
    QKeyEvent press(QEvent::KeyPress, step < 0 ? Qt::Key_Up : Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(m_table, &press);
    m_sentKey = false;
}

void TableNavigator::moveUp() { moveVertically(-1); }
void TableNavigator::moveDown() { moveVertically(1); }

bool TableNavigator::takeSentKey()
{
    const bool sent = m_sentKey;
    m_sentKey = false;
    return sent;
}

void TableNavigator::moveHorizontally(int step)
{
    const int row = m_table->currentRow();
    const int current = m_table->currentColumn();
    int column = current + step;
    while (column >= 0 && column < m_table->columnCount()
           && (m_table->isColumnHidden(column) || !stopsAt(row, column)))
        column += step;
    if (column < 0)
        m_table->horizontalScrollBar()->setValue(m_table->horizontalScrollBar()->minimum());
    else if (column >= m_table->columnCount())
        m_table->horizontalScrollBar()->setValue(m_table->horizontalScrollBar()->maximum());
    if (column < 0 || column >= m_table->columnCount() || column == current)
        return;
    makeCurrent(row, column);
}

void TableNavigator::moveLeft() { moveHorizontally(-1); }
void TableNavigator::moveRight() { moveHorizontally(1); }

void TableNavigator::makeCurrent(int row, int column)
{
    m_table->setCurrentCell(row, column);
    m_table->setFocus();
}

void TableNavigator::moveHome()
{
    const int column = m_table->currentColumn();
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (stopsAt(row, column)) {
            makeCurrent(row, column);
            return;
        }
    }
    m_table->scrollToBottom();
}

void TableNavigator::moveEnd()
{
    const int column = m_table->currentColumn();
    for (int row = m_table->rowCount() - 1; row >= 0; --row) {
        if (stopsAt(row, column)) {
            makeCurrent(row, column);
            return;
        }
    }
    m_table->scrollToTop();
}

void TableNavigator::pageVertically(bool forward)
{
    const int first = std::max(0, m_table->rowAt(0));
    int last = m_table->rowAt(m_table->viewport()->height());
    if (last < 0)
        last = m_table->rowCount() - 1;
    QScrollBar *bar = m_table->verticalScrollBar();
    bar->setPageStep(std::max(0, last - first));
    bar->triggerAction(forward ? QAbstractSlider::SliderPageStepAdd : QAbstractSlider::SliderPageStepSub);
    m_table->setFocus();
}

void TableNavigator::pageHorizontally(bool forward)
{
    const int first = std::max(0, m_table->columnAt(0));
    int last = m_table->columnAt(m_table->viewport()->width());
    if (last < 0)
        last = m_table->columnCount() - 1;
    QScrollBar *bar = m_table->horizontalScrollBar();
    bar->setPageStep(std::max(0, last - first));
    bar->triggerAction(forward ? QAbstractSlider::SliderPageStepAdd : QAbstractSlider::SliderPageStepSub);
    m_table->setFocus();
}

void TableNavigator::pageUp() { pageVertically(false); }
void TableNavigator::pageDown() { pageVertically(true); }
void TableNavigator::pageLeft() { pageHorizontally(false); }
void TableNavigator::pageRight() { pageHorizontally(true); }
