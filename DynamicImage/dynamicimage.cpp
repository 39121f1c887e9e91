#include "dynamicimage.h"

#include "bufferwarning.h"
#include "controllerbinding.h"
#include "designerhost.h"
#include "enumvalue.h"
#include "newestfile.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "regularfile.h"
#include "widgetfactory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QMouseEvent>
#include <QMovie>
#include <QPainter>
#include <QTimer>

#include <cmath>
#include <optional>

HMI_REGISTER_WIDGET(DynamicImage)

using norvo_v0::QeltApp;

namespace {
constexpr int DataIndex = 0;
constexpr int VisibleIndex = 2;
} // namespace

class DynamicImage::Private
{
public:
    explicit Private(DynamicImage *q)
        : q(q)
        , binding(q, q)
    {
    }

    // Why file is no picture the movie player may decode (empty when it is): a regular file,
    // readable, and not so large that decoding it would take memory no panel has.
    static QString undecodable(const QString &file);
    void show(const QString &file);
    void makePlayer();
    bool showing() const { return label && label->movie(); }
    // The movie's scaled size follows scaledContents and the widget's size.
    void applyScale();
    void restartFrame();
    // The movie's scaled size for the widget's: no larger than MaxPixels.
    QSize scaledSize();
    void warn(const char *property, const QString &what);

    DynamicImage *const q;
    // Made with the first picture to show and the first auto-load: most images of a form show one
    // still picture or none at all, and polls no folder.
    std::optional<QLabel> label;
    std::optional<QMovie> movie;
    std::optional<QTimer> timer;
    NewestFile folder;
    ControllerBinding binding;
    QStringList images;
    int index = -1;
    bool scaled = false;
    bool autoLoad = false;
    QString autoLoadPath;
    QStringList nameFilters{QStringLiteral("*.bmp"), QStringLiteral("*.png")};
    DataClass dataClass = User;
    int address = 0;
    UserLevel visibleLevel = NoLevel;
    int authority = 0;
    BitType visibleType = None;
    int visibleAddress = 0;
    int visibleBit = 0;
    bool bitOnVisible = true;
    int folderVersion = 0; // of the newest file last taken from the folder
    QString warned;        // the last warning, not repeated on every value or poll
};

void DynamicImage::Private::warn(const char *property, const QString &what)
{
    if (what == warned)
        return;
    warned = what;
    warnProperty(q, property, what);
}

QSize DynamicImage::Private::scaledSize()
{
    const QSize size = q->size();
    const qint64 pixels = qint64(size.width()) * size.height();
    if (pixels <= MaxPixels)
        return size;
    const double factor = std::sqrt(double(MaxPixels) / double(pixels));
    const QSize bounded(std::max(1, int(size.width() * factor)), std::max(1, int(size.height() * factor)));
    warn("scaledContents", QStringLiteral("%1 x %2 is more than %3 pixels; the picture is scaled to %4 x %5")
                               .arg(size.width())
                               .arg(size.height())
                               .arg(MaxPixels)
                               .arg(bounded.width())
                               .arg(bounded.height()));
    return bounded;
}

QString DynamicImage::Private::undecodable(const QString &file)
{
    const QString refused = RegularFile::refusal(file, QIODevice::ReadOnly);
    if (!refused.isEmpty())
        return refused;
    QImageReader reader(file);
    if (!reader.canRead())
        return reader.errorString();
    const QSize size = reader.size();
    if (!size.isValid())
        return QStringLiteral("no picture size in it");
    if (qint64(size.width()) * size.height() > MaxPixels)
        return QStringLiteral("%1 x %2 is more than %3 pixels").arg(size.width()).arg(size.height()).arg(MaxPixels);
    // An animation reports its first frame's size, but is drawn on a screen of the size its header
    // claims, which a few bytes can make enormous.
    if (reader.format() == "gif") {
        QFile gif(file);
        if (!gif.open(QIODevice::ReadOnly))
            return gif.errorString();
        const QByteArray header = gif.read(10);
        if (header.size() < 10)
            return QStringLiteral("no GIF header");
        const auto le16 = [&header](int at) { return quint8(header[at]) | quint8(header[at + 1]) << 8; };
        if (qint64(le16(6)) * le16(8) > MaxPixels)
            return QStringLiteral("an animation of %1 x %2 is more than %3 pixels").arg(le16(6)).arg(le16(8)).arg(MaxPixels);
    }
    return QString();
}

void DynamicImage::Private::makePlayer()
{
    if (label)
        return;
    label.emplace(q);
    label->setAlignment(Qt::AlignCenter);
    label->setGeometry(0, 0, q->QWidget::width(), q->QWidget::height());
    // A child made after its parent was shown stays hidden unless shown itself.
    if (q->isVisible())
        label->show();
    movie.emplace();
    applyScale();
}

void DynamicImage::Private::applyScale()
{
    const QSize size = scaled ? scaledSize() : QSize(-1, -1);
    if (!movie)
        return;
    movie->setScaledSize(size);
    restartFrame();
}

void DynamicImage::Private::show(const QString &file)
{
    if (movie)
        movie->stop();
    // A missing, broken or oversized picture leaves an empty label, never a decode.
    const QString refused = undecodable(file);
    if (!refused.isEmpty()) {
        if (QFileInfo::exists(file))
            warn("images", QStringLiteral("\"%1\" is not shown: %2").arg(file, refused));
        if (label) {
            label->clear();
            movie->setFileName(QString());
        }
        return;
    }
    makePlayer();
    movie->setFileName(file);
    // The label shows the movie's frames as they come: given the movie before its first frame.
    label->setMovie(&*movie);
    if (!movie->jumpToFrame(0)) {
        label->clear();
        return;
    }
    if (movie->frameCount() >= 2 && binding.isAttached())
        movie->start();
}

void DynamicImage::Private::restartFrame()
{
    if (!showing())
        return;
    // The picture is read again at the new scale; an animation is left stopped there.
    const int frame = std::max(0, movie->currentFrameNumber());
    movie->stop();
    movie->setFileName(movie->fileName());
    movie->jumpToFrame(frame);
}

DynamicImage::DynamicImage(QWidget *parent)
    : QWidget(parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    d->folder.setNameFilters(d->nameFilters);
    // Relative picture paths name files of the project being edited.
    if (QWidget *formWindow = DesignerHost::formWindowOf(this)) {
        const QString project = DesignerHost::instance()->projectPath(formWindow);
        if (!project.isEmpty())
            QDir::setCurrent(project);
    }
}

DynamicImage::~DynamicImage() = default;

QStringList DynamicImage::images() const { return d->images; }
void DynamicImage::setImages(const QStringList &images) { d->images = images; }
int DynamicImage::index() const { return d->index; }

void DynamicImage::setIndex(const int &index)
{
    if (index < 0 || index >= d->images.size())
        return;
    d->index = index;
    d->show(d->images.at(index));
}

bool DynamicImage::scaledContents() const { return d->scaled; }

void DynamicImage::setScaledContents(const bool &scaled)
{
    d->scaled = scaled;
    d->applyScale();
}

bool DynamicImage::autoLoadImage() const { return d->autoLoad; }

void DynamicImage::setAutoLoadImage(bool on)
{
    d->autoLoad = on;
    if (on && !d->timer) {
        d->timer.emplace();
        d->timer->setInterval(AutoLoadInterval);
        connect(&*d->timer, &QTimer::timeout, this, &DynamicImage::updateImage);
    }
    if (on)
        d->timer->start();
    else if (d->timer)
        d->timer->stop();
}

QString DynamicImage::autoLoadPath() const { return d->autoLoadPath; }

void DynamicImage::setAutoLoadPath(const QString &path)
{
    d->autoLoadPath = path;
    d->folder.setPath(path);
}

QStringList DynamicImage::nameFilters() const { return d->nameFilters; }

void DynamicImage::setNameFilters(const QStringList &filters)
{
    d->nameFilters = filters;
    d->folder.setNameFilters(filters);
}

int DynamicImage::comId() const { return d->binding.comId(); }
void DynamicImage::setComId(int comId) { d->binding.setComId(comId); }
int DynamicImage::channel() const { return d->binding.channel(); }
void DynamicImage::setChannel(int channel) { d->binding.setChannel(channel); }
DynamicImage::DataClass DynamicImage::dataClass() const { return d->dataClass; }
void DynamicImage::setDataClass(DataClass dataClass) { assignEnum(this, "dataClass", d->dataClass, dataClass); }
int DynamicImage::address() const { return d->address; }
void DynamicImage::setAddress(int address) { d->address = address; }
DynamicImage::UserLevel DynamicImage::lowestVisibleUserLevel() const { return d->visibleLevel; }
void DynamicImage::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
int DynamicImage::operationalAuthority() const { return d->authority; }

void DynamicImage::setOperationalAuthority(int authority)
{
    if (authority >= 0 && authority <= ControllerBinding::MaxAuthority)
        d->authority = authority;
}

int DynamicImage::top() const { return geometry().top(); }
int DynamicImage::left() const { return geometry().left(); }
int DynamicImage::width() const { return geometry().width(); }
int DynamicImage::height() const { return geometry().height(); }

void DynamicImage::setTop(int top)
{
    if (top != geometry().top())
        setGeometry(geometry().left(), top, geometry().width(), geometry().height());
}

void DynamicImage::setLeft(int left)
{
    if (left != geometry().left())
        setGeometry(left, geometry().top(), geometry().width(), geometry().height());
}

void DynamicImage::setWidth(int width)
{
    if (width != geometry().width())
        setGeometry(geometry().left(), geometry().top(), width, geometry().height());
}

void DynamicImage::setHeight(int height)
{
    if (height != geometry().height())
        setGeometry(geometry().left(), geometry().top(), geometry().width(), height);
}

DynamicImage::BitType DynamicImage::visibleBitType() const { return d->visibleType; }
void DynamicImage::SetVisibleBitType(BitType type) { assignEnum(this, "visibleBitType", d->visibleType, type); }
int DynamicImage::visibleAddress() const { return d->visibleAddress; }

void DynamicImage::SetVisibleAddress(int address)
{
    if (address >= 0)
        d->visibleAddress = address;
}

int DynamicImage::visibleBitIndex() const { return d->visibleBit; }

void DynamicImage::SetVisibleBitIndex(int index)
{
    if (index >= 0 && index <= 31)
        d->visibleBit = index;
}

bool DynamicImage::bitOnVisible() const { return d->bitOnVisible; }
void DynamicImage::SetBitOnVisible(bool on) { d->bitOnVisible = on; }
bool DynamicImage::ChnNoVarEnable() const { return d->binding.chnNoVarEnable(); }
void DynamicImage::SetChnNoVarEnable(bool enable) { d->binding.setChnNoVarEnable(enable); }
bool DynamicImage::isPlaying() const { return d->movie && d->movie->state() == QMovie::Running; }
QPixmap DynamicImage::currentPixmap() const { return d->showing() ? d->movie->currentPixmap() : QPixmap(); }
int DynamicImage::folderListings() const { return d->folder.listings(); }
QSize DynamicImage::sizeHint() const { return QSize(200, 200); }
QSize DynamicImage::minimumSizeHint() const { return QSize(200, 200); }

void DynamicImage::updateData(int index, int value)
{
    if (index == VisibleIndex) {
        // Registered also without a bit (type None), as the application expects; what such a
        // registration delivers says nothing about the picture, which then always shows.
        if (d->visibleType != None)
            setVisible(d->bitOnVisible ? value != 0 : value == 0);
    } else
        setIndex(value);
}

void DynamicImage::updateImage()
{
    const QString path = d->folder.poll();
    if (d->folder.truncated())
        d->warn("autoLoadPath", QStringLiteral("\"%1\" holds more than %2 entries; the newest picture is looked "
                                               "for among the first %2 only").arg(d->autoLoadPath).arg(NewestFile::MaxEntries));
    if (path.isEmpty())
        return;
    // A picture written again in place shows anew, as a new one does.
    const bool rewritten = d->folder.version() != d->folderVersion;
    d->folderVersion = d->folder.version();
    if (d->index < 0) {
        d->images.append(path);
        setIndex(0);
    } else if (d->index < d->images.size() && (d->images.at(d->index) != path || rewritten)) {
        d->images[d->index] = path;
        setIndex(d->index);
    }
}

void DynamicImage::updateAuthority(int) {}

void DynamicImage::setQeltAppAndFormPtr(void *app, void *form)
{
    d->binding.attach(app, form);
    QeltApp *application = d->binding.app();
    if (!application)
        return;
    // Registered whatever the class and bit type, as the application expects both indexes.
    QWidget *f = d->binding.form();
    const int channel = d->binding.channelIndex();
    application->registerUIVariable(f, this, this, DataIndex, d->binding.comId(), channel, d->dataClass, d->address,
                                    -1, 0, 1, 10, 10, 0, 0, false);
    const int value = application->getData(channel, QeltApp::DataClass(d->dataClass), d->address, d->binding.comId());
    application->registerUIVariable(f, this, this, VisibleIndex, d->binding.comId(), channel, 0, d->visibleAddress,
                                    d->visibleType, d->visibleBit, 1, 10, 10, 0, 0, false);
    updateData(DataIndex, value);
}

void DynamicImage::mousePressEvent(QMouseEvent *event)
{
    emit clicked();
    QWidget::mousePressEvent(event);
}

void DynamicImage::mouseDoubleClickEvent(QMouseEvent *event)
{
    emit doubleClicked();
    QWidget::mouseDoubleClickEvent(event);
}

void DynamicImage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // Designer opens a form before it knows the form's file: relative pictures could not be found
    // while it was read. Shown, the form's folder is known.
    QWidget *formWindow = DesignerHost::formWindowOf(this);
    if (!formWindow || d->showing() || d->index < 0 || d->index >= d->images.size())
        return;
    const QString project = DesignerHost::instance()->projectPath(formWindow);
    if (!project.isEmpty() && QDir::setCurrent(project))
        d->show(d->images.at(d->index));
}

void DynamicImage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (d->label)
        d->label->setGeometry(0, 0, QWidget::width(), QWidget::height());
    if (d->scaled)
        d->applyScale();
}

void DynamicImage::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    // In Designer an image without a picture would be invisible on the form: its outline shows it.
    if (!d->showing() && DesignerHost::formWindowOf(this)) {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DashLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}
