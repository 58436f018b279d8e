// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/ModemPort.h"

#include "keyer/PlatformLine.h"

#include <QFileInfo>
#include <QSerialPort>

namespace {

class SystemPort final : public ModemPort {
public:
    explicit SystemPort(std::unique_ptr<QSerialPort> port)
        : port_(std::move(port))
        , handle_(port_->handle())
    {
        PlatformLine::Lower(handle_, true, true); // in one go: opening has raised both
        Lower();
        PlatformLine::HangUpOnClose(handle_);
    }
    ~SystemPort() override
    {
        Lower();
        port_->close();
    }

    bool Set(ModemLine line, bool on) override
    {
        return line == ModemLine::RTS ? port_->setRequestToSend(on) : port_->setDataTerminalReady(on);
    }
    void ForceLow(ModemLine line) override
    {
        PlatformLine::Lower(handle_, line == ModemLine::RTS, line == ModemLine::DTR);
    }

private:
    void Lower()
    {
        port_->setRequestToSend(false);
        port_->setDataTerminalReady(false);
    }

    std::unique_ptr<QSerialPort> port_;
    PlatformLine::Handle handle_;
};

Failure WhyNot(const QString &device, QSerialPort::SerialPortError error, const QString &cause)
{
    const QFileInfo file(device);
    if (error == QSerialPort::DeviceNotFoundError)
        return {u"No existe el puerto %1. ¿Está enchufado el adaptador?"_qs.arg(device), Failure::Kind::Missing};
    if (error == QSerialPort::PermissionError && file.exists() && !file.isWritable())
        return {u"No hay permiso para usar el puerto %1. %2"_qs.arg(device, PlatformLine::PermissionHint()),
            Failure::Kind::ReadOnly};
    if (error == QSerialPort::PermissionError)
        return {u"El puerto %1 está en uso por otro programa."_qs.arg(device), Failure::Kind::Locked};
    return {u"No se puede abrir el puerto %1: %2"_qs.arg(device, cause)};
}

} // namespace

Result<std::unique_ptr<ModemPort>> SystemModemPorts::Open(const QString &device)
{
    auto port = std::make_unique<QSerialPort>();
    port->setPortName(device);
    // Nothing is read or written, so the port needs no events and may be used from the thread that keys.
    if (!port->open(QIODevice::WriteOnly))
        return WhyNot(device, port->error(), port->errorString());
    return std::unique_ptr<ModemPort>(std::make_unique<SystemPort>(std::move(port)));
}
