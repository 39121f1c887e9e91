#ifndef PROBEWIDGET_H
#define PROBEWIDGET_H

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QColor>
#include <QLabel>
#include <QPixmap>
#include <QStringList>

// A widget for the designer tests, with the kinds of properties the HMI widgets have and standard
// widgets lack: an enum of its own, a colour, a picture and a string list.
class ProbeWidget : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(Mode mode READ mode WRITE setMode)
    Q_PROPERTY(QColor lampColor READ lampColor WRITE setLampColor)
    Q_PROPERTY(QPixmap picture READ picture WRITE setPicture)
    Q_PROPERTY(QStringList lines READ lines WRITE setLines)
    Q_PROPERTY(int address READ address WRITE setAddress)
public:
    enum Mode { Off, Slow, Fast };
    Q_ENUM(Mode)

    explicit ProbeWidget(QWidget *parent = nullptr);

    Mode mode() const { return m_mode; }
    void setMode(Mode mode) { m_mode = mode; }
    QColor lampColor() const { return m_lampColor; }
    void setLampColor(const QColor &color) { m_lampColor = color; }
    QPixmap picture() const { return m_picture; }
    void setPicture(const QPixmap &picture) { m_picture = picture; }
    QStringList lines() const { return m_lines; }
    void setLines(const QStringList &lines) { m_lines = lines; }
    int address() const { return m_address; }
    void setAddress(int address) { m_address = address; }

public Q_SLOTS:
    void blink() {}

private:
    Mode m_mode = Off;
    QColor m_lampColor = Qt::green;
    QPixmap m_picture;
    QStringList m_lines;
    int m_address = 0;
};

// Its Designer descriptor. It installs the designer host on initialisation, as every descriptor.
class ProbeWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    explicit ProbeWidgetPlugin(QObject *parent = nullptr);

    QString name() const override { return QStringLiteral("ProbeWidget"); }
    QString group() const override { return QStringLiteral("HMI Tests"); }
    QString toolTip() const override { return QString(); }
    QString whatsThis() const override { return QString(); }
    QString includeFile() const override { return QStringLiteral("probewidget.h"); }
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget *createWidget(QWidget *parent) override { return new ProbeWidget(parent); }
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;

    static int initializeCount;
    // Adds the descriptor to the plugin collection: call before the first Designer core is made.
    static void registerInCollection();

private:
    bool m_initialized = false;
};

#endif
