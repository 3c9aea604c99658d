// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_connection.h"

#include "platform/threads/quiet_start.h"
#include "playback/panel/bus/dbus/bus_worker.h"

#include <QThread>

namespace ov {

BusConnection::BusConnection(const QString& address, const QString& path,
                             const QString& description)
    : thread_(std::make_unique<QThread>()) {
    auto* worker = new BusWorker(address, path, description);
    worker->moveToThread(thread_.get());
    connect(thread_.get(), &QThread::started, worker, &BusWorker::open);
    connect(thread_.get(), &QThread::finished, worker, &QObject::deleteLater);
    connect(worker, &BusWorker::connected, this, &BusConnection::connected);
    connect(worker, &BusWorker::lost, this, &BusConnection::lost);
    connect(worker, &BusWorker::called, this, &BusConnection::called);
    connect(worker, &BusWorker::signalled, this, &BusConnection::signalled);
    connect(this, &BusConnection::toSend, worker, &BusWorker::send);
    connect(this, &BusConnection::toListen, worker, &BusWorker::listen);
    thread_->setObjectName(QStringLiteral("ov-bus")); // what debuggers show
    platform::startQuietly([this] { thread_->start(); });
}

// One that hangs ends by itself, when the bus has answered or is given up.
BusConnection::~BusConnection() {
    constexpr unsigned long patience = 200; // ms
    thread_->quit();
    if (thread_->wait(patience))
        return;
    QThread* left = thread_.release();
    connect(left, &QThread::finished, left, &QObject::deleteLater);
}

} // namespace ov
