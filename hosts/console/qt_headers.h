// SPDX-License-Identifier: Apache-2.0
/// @file
/// What nearly every source of the console includes of Qt, compiled once for all of them.
///
/// Reading these headers takes longer than compiling most of the console's sources. The build puts
/// them before each; a source still includes what it uses.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QThread>
#include <QTreeView>
#include <QVBoxLayout>
