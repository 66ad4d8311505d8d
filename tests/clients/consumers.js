// SPDX-License-Identifier: MIT
//
// Two published consumers behind one face.
'use strict';

// What is the same of both: walk() returns the number of elements, row(t) the sources of a target.
class ConsumerA {
  static async connect(port) {
    const { EmberClient, EmberClientEvent, LoggingService } = require('node-emberplus');
    const consumer = new ConsumerA();
    consumer.client = new EmberClient({ host: '127.0.0.1', port, logger: new LoggingService(0) });
    consumer.client.on(EmberClientEvent.ERROR, () => {});
    await consumer.client.connectAsync();
    await consumer.client.getDirectoryAsync();
    return consumer;
  }
  async walk() {
    await this.client.expandAsync();
    const count = (element) => 1 + (element.getChildren() || []).reduce((sum, each) => sum + count(each), 0);
    return this.client.root.getChildren().reduce((sum, each) => sum + count(each), 0);
  }
  async openMatrix() {
    this.matrix = await this.client.getElementByPathAsync('1.2');
    return this.matrix.contents.targetCount;
  }
  targets() { return Object.keys(this.matrix.connections || {}).length; }
  row(target) { return [...(this.matrix.connections[target].sources || [])].sort((a, b) => a - b); }
  absolute(target, sources) { return this.client.matrixSetConnection(this.matrix, target, sources); }
  connectTo(target, sources) { return this.client.matrixConnectAsync(this.matrix, target, sources); }
  disconnectFrom(target, sources) { return this.client.matrixDisconnectAsync(this.matrix, target, sources); }
  async open(path) { return this.client.getElementByPathAsync(path); }
  value(element) { return element.contents.value; }
  async set(element, value) { await this.client.setValueAsync(element, value); }
  async invoke(element, target, source, on) {
    const { FunctionArgument } = require('node-emberplus/lib/common/function/function-argument');
    const result = await this.client.invokeFunctionAsync(element, [
      new FunctionArgument(1, target), new FunctionArgument(1, source), new FunctionArgument(4, on)]);
    return result.result[0].value;
  }
  close() { return this.client.disconnectAsync(); }
}
ConsumerA.title = 'node-emberplus';

class ConsumerB {
  static async connect(port) {
    const { EmberClient } = require('emberplus-connection');
    const consumer = new ConsumerB();
    consumer.client = new EmberClient('127.0.0.1', port);
    consumer.client.on('error', () => {});
    consumer.client.on('warn', () => {});
    await consumer.client.connect();
    await (await consumer.client.getDirectory(consumer.client.tree)).response;
    return consumer;
  }
  async walk() {
    await this.client.expand(Object.values(this.client.tree)[0]);
    const count = (element) => 1 + Object.values(element.children || {}).reduce((sum, each) => sum + count(each), 0);
    return Object.values(this.client.tree).reduce((sum, each) => sum + count(each), 0);
  }
  async openMatrix() {
    this.matrix = await this.client.getElementByPath('1.2');
    await (await this.client.getDirectory(this.matrix)).response;
    await this.client.subscribe(this.matrix, () => {});
    return this.matrix.contents.targetCount;
  }
  targets() { return Object.keys(this.matrix.contents.connections || {}).length; }
  row(target) { return [...(this.matrix.contents.connections[target].sources || [])].sort((a, b) => a - b); }
  async absolute(target, sources) { await (await this.client.matrixSetConnection(this.matrix, target, sources)).response; }
  async connectTo(target, sources) { await (await this.client.matrixConnect(this.matrix, target, sources)).response; }
  async disconnectFrom(target, sources) { await (await this.client.matrixDisconnect(this.matrix, target, sources)).response; }
  async open(path) {
    const element = await this.client.getElementByPath(path);
    if (element.contents.type === 'PARAMETER') await this.client.subscribe(element, () => {});
    return element;
  }
  value(element) { return element.contents.value; }
  async set(element, value) { await (await this.client.setValue(element, value)).response; }
  async invoke(element, target, source, on) {
    const request = await this.client.invoke(element, { type: 'INTEGER', value: target },
      { type: 'INTEGER', value: source }, { type: 'BOOLEAN', value: on });
    return (await request.response).result[0].value;
  }
  close() { return this.client.disconnect(); }
}
ConsumerB.title = 'emberplus-connection';

module.exports = [ConsumerA, ConsumerB];
