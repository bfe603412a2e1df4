// The live feed: the TV journal, the plug-in's console log, the agent log and the host's calls,
// streamed as server-sent events, with a text filter, a filter per source and a pause. The page
// keeps at most MAX_SHOWN entries; paused, it holds at most MAX_SHOWN more.
import { element } from './api.js';

const MAX_SHOWN = 2000;
// The frame route's entries (several per frame) have a smaller share of the page.
const MAX_FRAME_ENTRIES = 300;

export const SOURCES = [
  ['tv', 'TV journal', true],
  ['plugin', 'Plug-in log', true],
  ['agent', 'Agent log', true],
  ['host', 'Host', true],
  ['console', 'Console', true],
  ['frame', 'Frames', false],
];

export class Feed {
  constructor({ list, filter, sources, pauseButton, clearButton, connection, onState }) {
    this.list = list;
    this.filter = filter;
    this.pauseButton = pauseButton;
    this.connection = connection;
    this.onState = onState;
    this.paused = false;
    this.held = [];
    this.frameEntries = 0;
    this.shown = new Set(SOURCES.filter(([, , on]) => on).map(([name]) => name));

    for (const [name, label, on] of SOURCES) {
      const box = element('input', { type: 'checkbox', checked: on, 'data-source': name });
      box.addEventListener('change', () => {
        if (box.checked) this.shown.add(name);
        else this.shown.delete(name);
        this.applyFilter();
      });
      sources.append(element('label', {}, box, label));
    }
    filter.addEventListener('input', () => this.applyFilter());
    pauseButton.addEventListener('click', () => this.setPaused(!this.paused));
    clearButton.addEventListener('click', () => {
      this.list.replaceChildren();
      this.frameEntries = 0;
    });
  }

  connect() {
    const events = new EventSource('/api/feed');
    events.addEventListener('open', () => this.setConnection('live', 'live'));
    events.addEventListener('error', () => this.setConnection('lost', 'reconnecting…'));
    events.addEventListener('state', (event) => this.onState(JSON.parse(event.data)));
    events.addEventListener('entry', (event) => this.receive(JSON.parse(event.data)));
    events.addEventListener('dropped', (event) => {
      const { count } = JSON.parse(event.data);
      this.receive({ notice: `${count} older entries were dropped before they reached this page` });
    });
    this.events = events;
  }

  setConnection(state, text) {
    this.connection.dataset.state = state;
    this.connection.textContent = text;
  }

  setPaused(paused) {
    this.paused = paused;
    if (!paused) {
      const held = this.held;
      this.held = [];
      held.forEach((entry) => this.append(entry));
    }
    this.updatePauseButton();
  }

  updatePauseButton() {
    this.pauseButton.textContent = this.paused
      ? `Resume${this.held.length ? ` (${this.held.length} new)` : ''}` : 'Pause';
  }

  receive(entry) {
    if (this.paused) {
      this.held.push(entry);
      if (this.held.length > MAX_SHOWN) this.held.shift();
      this.updatePauseButton();
      return;
    }
    this.append(entry);
  }

  append(entry) {
    const item = entry.notice
      ? element('li', { class: 'notice' }, entry.notice)
      : element('li', { 'data-source': entry.source, 'data-seq': String(entry.seq) },
        element('span', { class: 'time' }, `${entry.t.toFixed(1)}s`),
        element('span', { class: 'source' }, entry.source),
        element('span', { class: 'text' }, entry.text));
    this.applyTo(item);
    const atBottom = this.list.scrollHeight - this.list.scrollTop - this.list.clientHeight < 24;
    this.list.append(item);
    if (entry.source === 'frame' && ++this.frameEntries > MAX_FRAME_ENTRIES) {
      this.list.querySelector('li[data-source="frame"]').remove();
      this.frameEntries -= 1;
    }
    while (this.list.childElementCount > MAX_SHOWN) {
      if (this.list.firstElementChild.dataset.source === 'frame') this.frameEntries -= 1;
      this.list.firstElementChild.remove();
    }
    if (atBottom) this.list.scrollTop = this.list.scrollHeight;
  }

  applyTo(item) {
    const text = this.filter.value.trim().toLowerCase();
    const source = item.dataset.source;
    item.hidden = (source !== undefined && !this.shown.has(source))
      || (text !== '' && !item.textContent.toLowerCase().includes(text));
  }

  applyFilter() {
    for (const item of this.list.children) this.applyTo(item);
  }
}
