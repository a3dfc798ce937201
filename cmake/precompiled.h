// What most of the rooms include, compiled once; a file includes all the same what it uses.
#pragma once

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QJsonObject>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>

#include <algorithm>
#include <memory>
