// SPDX-License-Identifier: MIT
//
// usage: node clients_test.js BIN
//
// What two published consumers see and do on a console of 64 channels, and what of it comes to the
// switcher.
'use strict';
const assert = require('assert');
const { System, until } = require('./console.js');
const consumers = require('./consumers.js');

// The switcher gets these, and nothing else.
async function sent(system, lines) {
  let takes = [];
  await until(lines.join(), () => (takes = takes.concat(system.takes())).length >= lines.length);
  assert.deepStrictEqual(takes, lines);
}

async function play(system, Consumer) {
  const consumer = await Consumer.connect(system.port);
  const other = await Consumer.connect(system.port);
  assert.strictEqual(await consumer.walk(), 466, 'the elements of the tree');
  assert.strictEqual(await consumer.openMatrix(), 64);
  assert.strictEqual(consumer.targets(), 64, 'every target, empty ones too');
  await other.walk();
  await other.openMatrix();
  system.takes();

  await consumer.absolute(5, [7]);
  assert.deepStrictEqual(consumer.row(5), [7]);
  await sent(system, ['rx take output 6 source 8 action 3']);
  await until('the other one is told', () => other.row(5).join() === '7');

  await consumer.connectTo(5, [3]);
  assert.deepStrictEqual(consumer.row(5), [3, 7]);
  await sent(system, ['rx take output 6 source 4 action 2']);
  await consumer.connectTo(5, [3]);  // once more: it stands
  assert.deepStrictEqual(system.takes(), []);
  await consumer.disconnectFrom(5, [7]);
  assert.deepStrictEqual(consumer.row(5), [3]);
  await consumer.absolute(5, [1, 9]);
  await until('several', () => consumer.row(5).join() === '1,9');
  await consumer.absolute(5, []);
  await until('none', () => consumer.row(5).length === 0);
  system.takes();

  // An output is inhibited from itself.
  await consumer.connectTo(4, [4]);
  assert.deepStrictEqual(consumer.row(4), []);
  assert.deepStrictEqual(system.takes(), [], 'nothing for the switcher');

  const gain = await consumer.open('1.4.2.3.1');
  const wanted = consumer.value(gain) === -12 ? -20 : -12;
  await consumer.set(gain, wanted);
  assert.strictEqual(consumer.value(gain), wanted);
  await sent(system, [`rx gain input 4 step ${wanted + 100}`]);

  const call = await consumer.open('1.7.1');
  assert.strictEqual(await consumer.invoke(call, 6, 8, true), true);
  await sent(system, ['rx take output 7 source 9 action 134']);
  assert.deepStrictEqual(consumer.row(6), [8]);
  assert.strictEqual(await consumer.invoke(call, 6, 8, false), true);
  assert.strictEqual(await consumer.invoke(call, 64, 8, true), false, 'there is no such target');

  const label = await consumer.open('1.3.1.0');
  const text = `CAM ${Consumer.title.length}`;
  await system.editFirstLabel(text);
  await until('the label', () => consumer.value(label) === text);

  await consumer.close();
  const again = await Consumer.connect(system.port);
  await again.openMatrix();
  assert.deepStrictEqual(again.row(4), []);
  await again.close();
  await other.close();
}

async function playReadOnly(system, Consumer) {
  const consumer = await Consumer.connect(system.port);
  await consumer.openMatrix();
  await consumer.connectTo(5, [3]);
  assert.deepStrictEqual(consumer.row(5), []);
  assert.deepStrictEqual(system.takes(), []);
  await consumer.close();
}

async function main() {
  const bin = process.argv[2];
  for (const [lines, what] of [[['Takes=Yes'], play], [[], playReadOnly]]) {
    const system = await System.start(bin, lines);
    try {
      for (const Consumer of consumers) {
        await what(system, Consumer);
        console.log(`${Consumer.title}, ${what.name}: passed`);
      }
      assert.strictEqual(await system.stop(), 0, 'the console ends as it should');
    } finally {
      system.kill();
    }
  }
}

main().then(() => process.exit(0), (error) => {
  console.error(error);
  process.exit(1);
});
