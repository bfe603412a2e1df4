// The viewer's TV menu, the agent's server and the device: each shows the state snapshot the
// feed sends and changes it through the console's API.
import { element, getJson, postJson } from './api.js';

// The words the plug-in writes to the session-code setting when no code came.
const ERROR_WORDS = new Set(['networkError', 'serverError', 'connectedAlready']);

// What the plug-in last told the TV through the notify setting (after its leading 0).
const NOTICES = {
  1: { kind: 'connected', text: 'An engineer is connected to this TV.' },
  2: { kind: 'ended', text: 'The remote support session has ended.' },
};

function pressed(on, off, value) {
  on.setAttribute('aria-pressed', String(value === true));
  off.setAttribute('aria-pressed', String(value === false));
}

// Runs a state-changing call, showing a failure in `status`.
async function act(status, call) {
  try {
    await call();
    if (status) status.textContent = '';
  } catch (error) {
    if (status) status.textContent = error.message;
  }
}

function showText(node, text) {
  node.hidden = !text;
  node.textContent = text ?? '';
}

export class TvMenu {
  constructor(root) {
    const $ = (selector) => root.querySelector(selector);
    this.on = $('#support-on');
    this.off = $('#support-off');
    this.getCode = $('#get-code');
    this.dialogTitle = $('#tv-dialog-title');
    this.code = $('#tv-code');
    this.dialogText = $('#tv-dialog-text');
    this.screenNotice = $('#tv-screen-notice');
    this.badge = $('#tv-badge');
    this.setting = $('#tv-code-setting');
    this.notice = $('#tv-notice');
    const status = this.dialogText;
    this.on.addEventListener('click', () => act(status, () => postJson('/api/tv/remote-support', { on: true })));
    this.off.addEventListener('click', () => act(status, () => postJson('/api/tv/remote-support', { on: false })));
    this.getCode.addEventListener('click', () => act(status, () => postJson('/api/tv/session-code', {})));
  }

  // `tv`: the remote-support settings; `screen`: what the TV's screen shows, in its own words.
  show(tv, screen = {}) {
    pressed(this.on, this.off, tv.remoteSupport === 'on' ? true : tv.remoteSupport === 'off' ? false : null);
    const dialog = screen.dialog;
    this.dialogTitle.textContent = dialog ? dialog.title : '';
    this.dialogText.textContent = dialog ? dialog.text.join(' ') : '';
    if (dialog && dialog.code) {
      this.code.dataset.kind = 'code';
      this.code.textContent = dialog.code;
    } else if (ERROR_WORDS.has(tv.sessionCode)) {
      this.code.dataset.kind = 'error';
      this.code.textContent = tv.sessionCode;
    } else {
      this.code.dataset.kind = 'idle';
      this.code.textContent = '—';
    }
    showText(this.screenNotice, screen.notice);
    showText(this.badge, screen.badge);
    this.setting.textContent = tv.sessionCode || '(empty)';
    const notice = NOTICES[tv.notify];
    showText(this.notice, notice ? `Last notice to the TV: ${notice.text}` : '');
    if (notice) this.notice.dataset.kind = notice.kind;
  }
}

export class AgentServer {
  constructor(root) {
    this.state = root.querySelector('#host-state');
    this.code = root.querySelector('#host-code');
    this.connect = root.querySelector('#engineer-connect');
    this.disconnect = root.querySelector('#engineer-disconnect');
    this.up = root.querySelector('#network-up');
    this.down = root.querySelector('#network-down');
    this.answer = root.querySelector('#start-answer');
    this.scaleForm = root.querySelector('#time-scale-form');
    this.scale = root.querySelector('#time-scale');
    this.status = root.querySelector('#host-status');
    const post = (path, body) => act(this.status, () => postJson(path, body));
    this.connect.addEventListener('click', () => post('/api/host/engineer', { connected: true }));
    this.disconnect.addEventListener('click', () => post('/api/host/engineer', { connected: false }));
    this.up.addEventListener('click', () => post('/api/tv/network', { up: true }));
    this.down.addEventListener('click', () => post('/api/tv/network', { up: false }));
    this.answer.addEventListener('change', () => post('/api/host/start-answer', { answer: this.answer.value }));
    this.scaleForm.addEventListener('submit', (event) => {
      event.preventDefault();
      post('/api/time-scale', { scale: Number(this.scale.value) });
    });
  }

  show(state) {
    const { host, tv } = state;
    this.state.textContent = `${host.stateName} (${host.state})`;
    this.state.dataset.tone = host.state === 5 ? 'good' : host.state === 4 ? 'warn' : '';
    this.code.textContent = host.code ?? '–';
    this.connect.disabled = host.state !== 4;
    this.disconnect.disabled = host.state !== 5;
    pressed(this.up, this.down, tv.network);
    if (document.activeElement !== this.answer) this.answer.value = host.startAnswer;
    if (document.activeElement !== this.scale) this.scale.value = String(state.timeScale);
  }
}

export class Device {
  constructor(root, summary) {
    this.list = root.querySelector('#device');
    this.summary = summary;
    root.querySelector('#device-refresh').addEventListener('click', () => this.load());
  }

  async load() {
    try {
      const device = await getJson('/api/device');
      const rows = [
        ['Model', device.model],
        ['Platform', device.platform],
        ['Access password', device.password],
        ['Video size', `${device.videoWidth} × ${device.videoHeight}`],
        ['GStreamer path', device.gstreamerPath],
      ];
      this.list.replaceChildren(...rows.flatMap(([name, value]) =>
        [element('dt', {}, name), element('dd', { class: name === 'Access password' || name === 'GStreamer path' ? 'mono' : null }, String(value))]));
      this.summary.textContent = `${device.model} · ${device.platform} · ${device.videoWidth}×${device.videoHeight}`;
    } catch (error) {
      this.list.replaceChildren(element('dd', {}, error.message));
    }
  }
}
