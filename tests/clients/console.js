// SPDX-License-Identifier: MIT
//
// The real console on the real simulated switcher, without a display.
'use strict';
const { execFileSync, spawn } = require('child_process');
const fs = require('fs');
const net = require('net');
const os = require('os');
const path = require('path');

const kPatience = 120000;

const pause = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));

// Waits until `condition` gives something; fails with `what` when it never does.
async function until(what, condition) {
  for (const end = Date.now() + kPatience; Date.now() < end; await pause(20)) {
    const result = await condition();
    if (result) return result;
  }
  throw new Error(`waited in vain: ${what}`);
}

const freePort = () =>
  new Promise((done) => {
    const server = net.createServer().listen(0, '127.0.0.1', () => {
      const port = server.address().port;
      server.close(() => done(port));
    });
  });

class System {
  // `lines` is what the section OPEN GATEWAY holds besides the port.
  static async start(bin, lines, channels) {
    const system = new System();
    system.channels = channels;
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'clients-'));
    system.folder = folder;
    system.port = await freePort();
    const line = path.join(folder, 'line');
    fs.copyFileSync(path.join(bin, 'teskctl'), path.join(folder, 'teskctl'));
    execFileSync(path.join(bin, 'make_system'), [path.join(folder, 'Tesk.mdb'), `${channels}`]);
    system.simulator = spawn(
      path.join(bin, 'tesksim'),
      ['--baud', '0', '--log', '--link', line, '--channels', `${channels}`],
      { stdio: ['pipe', 'pipe', 'inherit'] });
    system.heard = '';
    system.simulator.stdout.on('data', (text) => (system.heard += text));
    await until('the simulated switcher', () => fs.existsSync(line));
    fs.writeFileSync(
      path.join(folder, 'Orvotesk.ini'),
      ['[CONFIGURATION]', 'COM Port=1', 'Softpanel Support=No', '[SERIAL DEVICES]', `COM1=${line}`,
        '[OPEN GATEWAY]', `Port=${system.port}`, ...lines, ''].join('\r\n'));
    system.pilot = path.join(folder, 'pilot');
    const home = { HOME: folder, XDG_CONFIG_HOME: folder, XDG_DATA_HOME: folder, XDG_RUNTIME_DIR: folder };
    system.console = spawn(path.join(folder, 'teskctl'), [], {
      env: { ...process.env, ...home, QT_QPA_PLATFORM: 'offscreen', QT_PLUGIN_PATH: bin,
        QT_QPA_GENERIC_PLUGINS: `teskpilot:${system.pilot}` },
      stdio: ['ignore', 'ignore', 'inherit'],
    });
    try {
      await until('the console', () => fs.existsSync(system.pilot));
      await until('the whole map', () => system.heard.includes('rx poll tally'));
    } catch (error) {
      system.kill();
      throw error;
    }
    return system;
  }

  // One request to the console, as a user would act.
  ask(request) {
    return new Promise((done, failed) => {
      const socket = net.connect(this.pilot, () => socket.write(JSON.stringify(request) + '\n'));
      let answer = '';
      socket.on('error', failed);
      socket.on('data', (text) => {
        answer += text;
        if (!answer.endsWith('\n')) return;
        socket.destroy();
        done(JSON.parse(answer));
      });
    });
  }

  // Types a label into the first row of the grid.
  async editFirstLabel(label) {
    await this.ask({ do: 'trigger', object: 'ID_StationAlphas' });
    for (const sequence of ['Ctrl+Home', 'Home', 'Right']) {
      await this.ask({ do: 'keys', object: 'jgAlphas', sequence });
    }
    await this.ask({ do: 'keys', object: 'jgAlphas', sequence: 'F2' });
    await this.ask({ do: 'keys', object: 'edtLabel', sequence: 'Ctrl+A' });
    await this.ask({ do: 'keys', object: 'edtLabel', text: label });
    await this.ask({ do: 'keys', object: 'jgAlphas', sequence: 'Return' });
  }

  // The takes and gains that the switcher has got since the last call.
  takes() {
    const lines = this.heard.split('\n').filter((each) => /^rx (take|gain)/.test(each));
    const fresh = lines.slice(this.counted || 0);
    this.counted = lines.length;
    return fresh;
  }

  // Whatever has become of them.
  kill() {
    for (const process of [this.console, this.simulator]) process.kill('SIGKILL');
  }

  async stop() {
    const ended = new Promise((done) => this.console.on('exit', (code) => done(code)));
    this.console.kill('SIGTERM');
    const code = await ended;
    this.simulator.kill('SIGTERM');
    if (code === 0) fs.rmSync(this.folder, { recursive: true });
    return code;
  }
}

module.exports = { System, until, pause };
