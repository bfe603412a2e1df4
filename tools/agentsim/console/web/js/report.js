// Shows a command's output document: reports as tables, nested groups as sections, lists as
// rows, an output record as its text, and a text output (the log and configuration downloads,
// base64) as a file to save.
import { element, formatBytes } from './api.js';

const isScalar = (value) => value === null || typeof value !== 'object';
const show = (value) => (value === null ? 'null' : String(value));

function valueCell(value) {
  const text = show(value);
  return element('td', { class: text === 'OK' || text === 'NG' ? `value-${text}` : null }, text);
}

function tableOfMembers(entries) {
  return element('table', { class: 'report-table' },
    element('tbody', {}, entries.map(([name, value]) =>
      element('tr', {}, element('th', { scope: 'row' }, name), valueCell(value)))));
}

function tableOfRows(list) {
  if (list.length === 0) return element('p', { class: 'muted' }, '(none)');
  if (list.every(isScalar)) {
    return element('table', { class: 'report-table' },
      element('tbody', {}, list.map((value) => element('tr', {}, valueCell(value)))));
  }
  const columns = [];
  for (const row of list) {
    for (const name of Object.keys(isScalar(row) ? {} : row)) {
      if (!columns.includes(name)) columns.push(name);
    }
  }
  return element('table', { class: 'report-table' },
    element('thead', {}, element('tr', {}, columns.map((name) => element('th', {}, name)))),
    element('tbody', {}, list.map((row) => element('tr', {},
      columns.map((name) => {
        const value = isScalar(row) ? (name === columns[0] ? row : '') : row[name];
        return isScalar(value) ? valueCell(value ?? '') : element('td', {}, renderValue(value));
      })))));
}

function isOutputRecord(document) {
  return typeof document.ID === 'string' && typeof document.TYPE === 'string' && 'DATA' in document;
}

function renderValue(value) {
  if (Array.isArray(value)) return tableOfRows(value);
  if (isScalar(value)) return element('span', {}, show(value));
  if (isOutputRecord(value)) {
    return element('div', {},
      element('div', { class: 'muted small' }, `${value.ID} (${value.TYPE})`),
      isScalar(value.DATA) ? element('div', { class: 'text-block' }, show(value.DATA))
        : renderValue(value.DATA));
  }
  const entries = Object.entries(value);
  if (entries.length === 0) return element('p', { class: 'muted' }, '(no output)');
  const scalars = entries.filter(([, member]) => isScalar(member));
  const groups = entries.filter(([, member]) => !isScalar(member));
  return element('div', {},
    scalars.length ? tableOfMembers(scalars) : null,
    groups.map(([name, member]) => element('section', {},
      element('h4', {}, name), renderValue(member))));
}

export function decodeBase64(text) {
  if (!/^[A-Za-z0-9+/]*={0,2}$/.test(text) || text.length % 4 !== 0) return null;
  const binary = atob(text);
  const bytes = new Uint8Array(binary.length);
  for (let i = 0; i < binary.length; i += 1) bytes[i] = binary.charCodeAt(i);
  return bytes;
}

function fileKind(bytes) {
  if (bytes[0] === 0x50 && bytes[1] === 0x4b && bytes[2] === 0x03 && bytes[3] === 0x04) {
    return { extension: '.zip', type: 'application/zip', text: false };
  }
  if (bytes[0] === 0x1f && bytes[1] === 0x8b) {
    return { extension: '.gz', type: 'application/gzip', text: false };
  }
  try {
    new TextDecoder('utf-8', { fatal: true }).decode(bytes);
    return { extension: '.txt', type: 'text/plain', text: true };
  } catch {
    return { extension: '.bin', type: 'application/octet-stream', text: false };
  }
}

function fileCard(text, baseName) {
  const bytes = decodeBase64(text);
  if (bytes === null) return element('div', { class: 'text-block' }, text);
  const kind = fileKind(bytes);
  const name = `${baseName}${kind.extension}`;
  const url = URL.createObjectURL(new Blob([bytes], { type: kind.type }));
  const preview = kind.text
    ? new TextDecoder().decode(bytes.subarray(0, 4096)).split('\n').slice(0, 12).join('\n')
    : null;
  return element('div', {},
    element('div', { class: 'file' },
      element('span', { class: 'name' }, name),
      element('span', { class: 'muted', 'data-size': String(bytes.length) },
        `${formatBytes(bytes.length)} (${bytes.length.toLocaleString('en')} bytes)`),
      element('a', { class: 'save', href: url, download: name }, 'Save file')),
    preview !== null ? element('pre', {}, preview) : null);
}

// `fileName`: the name, without extension, that a text output is saved under.
export function renderOutput(output, fileName) {
  const node = typeof output === 'string' ? fileCard(output, fileName) : renderValue(output);
  return element('div', { class: 'report' }, node);
}
