// SPDX-License-Identifier: MIT

#ifndef SWITCHER_QT_SERIAL_PORT_H_
#define SWITCHER_QT_SERIAL_PORT_H_

#include <QObject>
#include <QSerialPort>
#include <QString>
#include <functional>

#include "switcher/line_pace.h"
#include "switcher/serial_port.h"

namespace switcher {

// The serial port of the machine.
class QtSerialPort : public QObject, public SerialPort {
  Q_OBJECT

 public:
  // The device of a port number, for example "/dev/ttyUSB0" for 1.  Asked at every Open().
  using DeviceName = std::function<QString(int number)>;

  explicit QtSerialPort(DeviceName deviceName, QObject* parent = nullptr);
  ~QtSerialPort() override;

  void SetEvents(SerialPortEvents* events) override { events_ = events; }
  model::Status Open(int number) override;
  void Close() override;
  bool IsOpen() const override { return port_.isOpen(); }
  int Number() const override { return number_; }
  Bytes Read() override;
  model::Status Write(std::uint8_t byte) override;
  std::size_t Unsent() const override;
  void SetSendThreshold(int threshold) override;

 private:
  int PendingOutput() const;
  bool WaitForOutputBelow(int limit);
  void OnReadyRead();
  void OnBytesWritten();
  void OnError(QSerialPort::SerialPortError error);
  void TellDrained();
  void TellLost();

  DeviceName deviceName_;
  QSerialPort port_;
  SerialPortEvents* events_ = nullptr;
  LinePace pace_;
  int number_ = 0;
  int sendThreshold_ = 0;
  int idleErrors_ = 0;  // without a byte read or written in between
  int stalledAt_ = 0;   // so much output stood when the line stalled; 0: it moves
  bool opening_ = false;
  bool writing_ = false;       // inside Write(): no handler may run
  bool readDeferred_ = false;  // bytes arrived meanwhile
  bool lostDeferred_ = false;  // the device went meanwhile
};

}  // namespace switcher

#endif  // SWITCHER_QT_SERIAL_PORT_H_
