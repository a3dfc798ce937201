// Draws a row of the list of recent boards.
#include "home/projectdelegate.h"

#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rowHeight = 60;
constexpr QSize documentSize(45, 45);
constexpr QPoint documentOffset(5, 5);
constexpr QPoint titleOffset(60, 25); // of the base line
constexpr QPoint infoOffset(60, 42); // of the base line

} // namespace

// The icon is looked up once: a look-up for every row is slow.
MainWindow::ProjectDelegate::ProjectDelegate()
    : documentIcon(QIcon::fromTheme(u"document"_s, QIcon(u":/img/plumdoc.png"_s)))
{ }

void MainWindow::ProjectDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    QStyleOptionViewItem row(option);
    initStyleOption(&row, index);
    const QPoint corner = row.rect.topLeft();

    painter->save();

    if (row.state & QStyle::State_Selected)
        painter->fillRect(row.rect, row.palette.highlight());
    else if (index.row() % 2 == 0)
        painter->fillRect(row.rect, QColor(0xf5, 0xf5, 0xf5));

    const qreal pixelRatio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(corner + documentOffset, documentIcon.pixmap(documentSize, pixelRatio));

    QFont font = painter->font();
    font.setWeight(QFont::Bold);
    painter->setFont(font);
    painter->drawText(corner + titleOffset, row.text);

    font.setWeight(QFont::Normal);
    painter->setFont(font);
    painter->drawText(corner + infoOffset, index.data(InfoRole).toString());

    painter->restore();
}

QSize MainWindow::ProjectDelegate::sizeHint(const QStyleOptionViewItem &option,
                                            const QModelIndex &) const
{
    return {option.rect.width(), rowHeight};
}
