// SPDX-License-Identifier: MIT
//
// usage: node clients_test.js BIN
//
// What two published consumers see and do on a console of 64 channels and of 256, and what of it
// comes to the switcher.
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

// Product, version, matrix, labels, parameters with gains of 64 sources at most, tally, link and
// functions, with the nodes that they stand in.
const elements = (channels) => 82 + 4 * channels + 2 * Math.min(channels, 64);

async function play(system, Consumer) {
  const { channels } = system;
  const high = channels - 64;  // in front of all numbers but those of gains
  const consumer = await Consumer.connect(system.port);
  const other = await Consumer.connect(system.port);
  assert.strictEqual(await consumer.walk(), elements(channels), 'the elements of the tree');
  assert.strictEqual(await consumer.openMatrix(), channels);
  assert.strictEqual(consumer.targets(), channels, 'every target, empty ones too');
  await other.walk();
  await other.openMatrix();
  system.takes();

  const t = high + 5;
  const [a, b, c, d] = [high + 1, high + 3, high + 7, high + 9];
  await consumer.absolute(t, [c]);
  assert.deepStrictEqual(consumer.row(t), [c]);
  await sent(system, [`rx take output ${t + 1} source ${c + 1} action 3`]);
  await until('the other one is told', () => other.row(t).join() === `${c}`);

  await consumer.connectTo(t, [b]);
  assert.deepStrictEqual(consumer.row(t), [b, c]);
  await sent(system, [`rx take output ${t + 1} source ${b + 1} action 2`]);
  await consumer.connectTo(t, [b]);  // once more: it stands
  assert.deepStrictEqual(system.takes(), []);
  await consumer.disconnectFrom(t, [c]);
  assert.deepStrictEqual(consumer.row(t), [b]);
  await consumer.absolute(t, [a, d]);
  await until('several', () => consumer.row(t).join() === `${a},${d}`);
  await consumer.absolute(t, []);
  await until('none', () => consumer.row(t).length === 0);
  system.takes();

  // An output is inhibited from itself.
  await consumer.connectTo(high + 4, [high + 4]);
  assert.deepStrictEqual(consumer.row(high + 4), []);
  assert.deepStrictEqual(system.takes(), [], 'nothing for the switcher');

  const gain = await consumer.open('1.4.2.3.1');
  const wanted = consumer.value(gain) === -12 ? -20 : -12;
  await consumer.set(gain, wanted);
  assert.strictEqual(consumer.value(gain), wanted);
  await sent(system, [`rx gain input 4 step ${wanted + 100}`]);

  const call = await consumer.open('1.7.1');
  const u = high + 6;
  assert.strictEqual(await consumer.invoke(call, u, high + 8, true), true);
  await sent(system, [`rx take output ${u + 1} source ${high + 9} action 134`]);
  assert.deepStrictEqual(consumer.row(u), [high + 8]);
  assert.strictEqual(await consumer.invoke(call, u, high + 8, false), true);
  assert.strictEqual(await consumer.invoke(call, channels, a, true), false, 'there is no such target');

  const label = await consumer.open('1.3.1.0');
  const text = `CAM ${Consumer.title.length}`;
  await system.editFirstLabel(text);
  await until('the label', () => consumer.value(label) === text);

  await consumer.close();
  const again = await Consumer.connect(system.port);
  await again.openMatrix();
  assert.deepStrictEqual(again.row(high + 4), []);
  await again.close();
  await other.close();
}

async function playReadOnly(system, Consumer) {
  const consumer = await Consumer.connect(system.port);
  const targets = await consumer.openMatrix();
  // Without a walk before, one of them takes an earlier answer for that of the matrix.
  await until('every target', () => consumer.targets() === targets);
  await consumer.connectTo(5, [3]);
  assert.deepStrictEqual(consumer.row(5), []);
  assert.deepStrictEqual(system.takes(), []);
  await consumer.close();
}

async function main() {
  const bin = process.argv[2];
  const houses = [[['Takes=Yes'], 64, play], [['Takes=Yes'], 256, play], [[], 64, playReadOnly]];
  for (const [lines, channels, what] of houses) {
    const system = await System.start(bin, lines, channels);
    try {
      for (const Consumer of consumers) {
        await what(system, Consumer);
        console.log(`${Consumer.title}, ${what.name}, ${channels} channels: passed`);
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
