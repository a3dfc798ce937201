// A bare window with a graphics view: what a start cannot do without.
#include <QApplication>
#include <QGraphicsView>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    QMainWindow window;
    auto *const view = new QGraphicsView;
    view->setFixedSize(1200, 700);
    window.setCentralWidget(view);
    window.show();
    return QApplication::exec();
}
