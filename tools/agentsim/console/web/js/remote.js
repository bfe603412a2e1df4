// The remote control, built from the button names in the remote-button command's descriptor:
// the familiar keys where a remote has them, every other name under "More buttons". Each press
// runs the remote-button command with that one button, in the order pressed.
import { commandPath, element, postJson } from './api.js';

export const REMOTE_COMMAND = 'FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON';

const key = (name, label, style = '') => ({ name, label, style });
const digits = [1, 2, 3, 4, 5, 6, 7, 8, 9].map((n) => key(`NUM${n}`, String(n)));

const LAYOUT = [
  { type: 'row', keys: [key('POWER', 'Power', 'power'), key('INPUT', 'Input'), key('SETUP', 'Setup')] },
  { type: 'grid3', keys: [...digits, key('DOT', '·'), key('NUM0', '0'), key('CHANNEL_RECALL', 'Last')] },
  { type: 'row', keys: [key('MENU', 'Menu'), key('HOME', 'Home'), key('INFO', 'Info')] },
  { type: 'dpad' },
  { type: 'row', keys: [key('BACK', 'Back'), key('EXIT', 'Exit'), key('GUIDE', 'Guide')] },
  { type: 'levels' },
  { type: 'row', keys: ['RED', 'GREEN', 'YELLOW', 'BLUE'].map((c) => key(c, '', `colour ${c.toLowerCase()}`)) },
  { type: 'row', keys: [key('REWIND', '◀◀', 'small'), key('PLAY', '▶', 'small'), key('PAUSE', '❚❚', 'small'), key('FAST_FORWARD', '▶▶', 'small')] },
  { type: 'row', keys: [key('SKIP_PREVIOUS', '|◀', 'small'), key('STOP', '■', 'small'), key('RECORD', '●', 'small'), key('SKIP_NEXT', '▶|', 'small')] },
  { type: 'row', keys: [key('SVC_NETFLIX', 'Netflix', 'small'), key('KEY_YOUTUBE', 'YouTube', 'small'), key('KEY_AMAZON', 'Prime', 'small')] },
];

const DPAD = [
  key('UP', '▲', 'up'), key('LEFT', '◀', 'left'), key('ENTER', 'OK', 'ok'),
  key('RIGHT', '▶', 'right'), key('DOWN', '▼', 'down'),
];

export class Remote {
  constructor(container, status) {
    this.container = container;
    this.status = status;
    this.queue = Promise.resolve();
    this.buttons = new Map();
  }

  // Builds the remote from the descriptor's list of button names.
  build(names) {
    const offered = new Set(names);
    const placed = new Set();
    const button = ({ name, label, style }) => {
      if (!offered.has(name)) return null;
      placed.add(name);
      const node = element('button', {
        type: 'button',
        class: `key ${style}`.trim(),
        title: name,
        'aria-label': name,
        'data-button': name,
        onclick: () => this.press(name),
      }, label);
      this.buttons.set(name, node);
      return node;
    };
    this.container.replaceChildren();
    for (const block of LAYOUT) {
      if (block.type === 'dpad') {
        this.container.append(element('div', { class: 'dpad' }, DPAD.map(button)));
      } else if (block.type === 'levels') {
        this.container.append(this.levels(button));
      } else {
        const keys = block.keys.map(button).filter(Boolean);
        if (keys.length) this.container.append(element('div', { class: block.type }, keys));
      }
    }
    const rest = names.filter((name) => !placed.has(name));
    if (rest.length) {
      const chips = rest.map((name) => button(key(name, name.replace(/^KEY_/, '').replace(/_/g, ' '))));
      this.container.append(element('details', { class: 'more-keys' },
        element('summary', {}, `More buttons (${rest.length})`),
        element('div', { class: 'chips' }, chips)));
    }
  }

  levels(button) {
    const rocker = (up, down, label) => element('div', { class: 'rocker' },
      button(key(up, '+')), element('span', { class: 'label' }, label), button(key(down, '−')));
    const middle = element('div', { class: 'middle' },
      button(key('VOL_MUTE', 'Mute')), button(key('CC', 'CC')));
    return element('div', { class: 'row' },
      rocker('VOL_UP', 'VOL_DOWN', 'VOL'), middle, rocker('CHANNEL_UP', 'CHANNEL_DOWN', 'CH'));
  }

  // Presses one button; presses run one after another, in the order made.
  press(name) {
    const node = this.buttons.get(name);
    node?.classList.add('pressed');
    this.queue = this.queue.then(async () => {
      try {
        const answer = await postJson(commandPath(REMOTE_COMMAND, 'exec'), { BUTTONS: [name] });
        this.status.textContent = `${name} → result ${answer.result}`;
      } catch (error) {
        this.status.textContent = `${name} failed: ${error.message}`;
      } finally {
        setTimeout(() => node?.classList.remove('pressed'), 120);
      }
    });
    return this.queue;
  }
}
