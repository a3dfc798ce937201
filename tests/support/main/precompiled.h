// What nearly every test includes, compiled once; a test includes all the same what it uses.
#pragma once

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
